#include "report/pdf_export.h"

#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "report/painter.h"
#include "report/report_error.h"

namespace report {

namespace {

[[noreturn]] void fail(const QString& path, const QString& reason) {
    throw WriteError(QStringLiteral("Cannot write the PDF file \"%1\": %2").arg(path, reason));
}

// Write permission bits count even for an administrator, who could write anyway: a read-only
// file or folder is how a user keeps a file as it is.
bool writeProtected(const QString& path) {
    constexpr QFile::Permissions kAnyWrite =
        QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    const auto mayWrite = [](const QFileInfo& info) {
        return info.isWritable() && (info.permissions() & kAnyWrite);
    };
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    return (file.exists() && !mayWrite(file)) || !folder.isDir() || !mayWrite(folder);
}

QPageLayout layoutOf(const PageSetup& setup) {
    const QPageSize size(QSizeF(setup.paper.width() / double(kTwipsPerInch),
                                setup.paper.height() / double(kTwipsPerInch)),
                         QPageSize::Inch, QString(), QPageSize::ExactMatch);
    return QPageLayout(size, setup.orientation, QMarginsF(0, 0, 0, 0));
}

}  // namespace

void exportPdf(const PageModel& model, const QString& path, const QString& title) {
    if (writeProtected(path)) {
        fail(path, QStringLiteral("the file or its folder is read-only or missing"));
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        fail(path, file.errorString());
    }
    {
        QPdfWriter writer(&file);
        writer.setTitle(title);
        writer.setCreator(QStringLiteral("Mixorama"));
        if (!writer.setPageLayout(layoutOf(model.setup))) {
            fail(path, QStringLiteral("the paper size is not valid"));
        }
        QPainter painter;
        if (!painter.begin(&writer)) {
            fail(path, QStringLiteral("the PDF could not be started"));
        }
        for (qsizetype i = 0; i < model.pages.size(); ++i) {
            if (i > 0 && !writer.newPage()) {
                fail(path, QStringLiteral("a new page could not be started"));
            }
            drawPage(painter, model.pages[i]);
        }
        painter.end();
    }
    if (file.error() != QFileDevice::NoError || !file.commit()) {
        fail(path, file.errorString());
    }
}

}  // namespace report
