#pragma once

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QTest>

#include "overview_fixture.h"
#include "support/list_samples.h"
#include "ui/windows/report_preview_window.h"

// The main window on the list samples, printing through its print tool.
class PrintTool : public OverviewFixture {
  protected:
    void SetUp() override {
        OverviewFixture::SetUp();
        testsupport::createCompilationDatabase(path);
        testsupport::fillListSamples(path);
    }
    void TearDown() override {
        OverviewFixture::TearDown();
        qputenv("MIXORAMA_HOME", programHome);
    }

    // Clicks the row of the main list that shows the compilation's name.
    void clickCompilation(const QString& name) {
        QAbstractItemModel* model = window->grid()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, 0);
            if (model->data(index).toString() == name) {
                QTest::mouseClick(window->grid()->viewport(), Qt::LeftButton, {},
                                  window->grid()->visualRect(index).center());
                ASSERT_EQ(currentName(), name);
                return;
            }
        }
        FAIL() << "no row " << name.toStdString();
    }
    // Chooses the report type and clicks Print; returns the preview it opened, if any.
    ui::ReportPreviewWindow* print(int reportType) {
        const QList<ui::ReportPreviewWindow*> before = previews();
        window->toolBar()->reportTypeList()->setCurrentIndex(reportType);
        window->toolBar()->clickTool("ID_Print");
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        for (ui::ReportPreviewWindow* preview : previews()) {
            if (!before.contains(preview)) {
                return preview;
            }
        }
        return nullptr;
    }
    QList<ui::ReportPreviewWindow*> previews() const {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window->findChildren<ui::ReportPreviewWindow*>();
    }
    // The program folder moved to a temporary folder, for the PDF files it receives.
    QString useTemporaryHome() {
        qputenv("MIXORAMA_HOME", dir.path().toLocal8Bit());
        return dir.file("data");
    }

    QString path = dir.file("lists.mdb");
    QByteArray programHome = qgetenv("MIXORAMA_HOME");
};
