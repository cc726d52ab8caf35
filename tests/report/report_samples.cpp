#include "report_samples.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include "engine/workspace.h"
#include "reports/cover_report.h"
#include "rtf/rtf.h"
#include "support/databases.h"
#include "support/samples.h"

namespace reporttest {

using report_engine::PageItem;

report_engine::PageSetup smallPaper() {
    report_engine::PageSetup setup;
    setup.paper = QSize(12000, 10000);
    setup.leftMargin = setup.topMargin = setup.rightMargin = setup.bottomMargin = 1000;
    return setup;
}

report_engine::RowTable table(const QStringList& fields, const QVector<QVector<QVariant>>& rows) {
    report_engine::RowTable result(fields);
    for (const QVector<QVariant>& row : rows) {
        result.append(row);
    }
    return result;
}

report_engine::Section pageNumberFooter(int height) {
    using report_engine::SectionFormat;
    return report_engine::section(
        "PageFooter", height,
        {report_engine::textBox(
             "txtPageNumber", QRect(0, 0, 1500, 300),
             [](const SectionFormat& f) { return QString("Page %1 of").arg(f.pageNumber()); }),
         report_engine::textBox(
             "txtPageCount", QRect(1500, 0, 500, 300),
             [](const SectionFormat& f) { return QString::number(f.pageCount()); })});
}

QVector<PageItem> itemsNamed(const report_engine::Page& page, const QString& name) {
    QVector<PageItem> result;
    for (const PageItem& item : page.items) {
        if (item.name == name || (name.isNull() && item.kind == report_engine::ItemKind::Text)) {
            result.append(item);
        }
    }
    std::stable_sort(result.begin(), result.end(), [](const PageItem& a, const PageItem& b) {
        return std::pair(a.rect.top(), a.rect.left()) < std::pair(b.rect.top(), b.rect.left());
    });
    return result;
}

QStringList textsNamed(const report_engine::Page& page, const QString& name) {
    QStringList result;
    for (const PageItem& item : itemsNamed(page, name)) {
        result.append(item.text);
    }
    return result;
}

QStringList textsOf(const report_engine::Page& page) {
    return textsNamed(page, QString());
}

QList<int> topsOf(const report_engine::Page& page, const QString& name) {
    QList<int> result;
    for (const PageItem& item : itemsNamed(page, name)) {
        result.append(item.rect.top());
    }
    return result;
}

int pageOf(const report_engine::PageModel& model, const QString& text) {
    for (int i = 0; i < model.pages.size(); ++i) {
        if (textsOf(model.pages[i]).contains(text)) {
            return i;
        }
    }
    return -1;
}

PageItem onlyNamed(const report_engine::PageModel& model, const QString& name) {
    EXPECT_EQ(model.pages.size(), 1);
    EXPECT_EQ(itemsNamed(model.pages.value(0), name).size(), 1) << name.toStdString();
    return itemsNamed(model.pages.value(0), name).value(0);
}

QVector<PageItem> drawings(const report_engine::PageModel& model) {
    QVector<PageItem> found = model.pages.value(0).items;
    found.removeIf([](const PageItem& item) { return !item.name.isEmpty(); });
    return found;
}

QString runProgram(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(30000) && process.exitCode() == 0)
        << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

std::pair<QSizeF, QString> pdfPageSize(const QString& path) {
    const QString info = runProgram("pdfinfo", {path});
    const auto match =
        QRegularExpression(R"(Page size:\s+([\d.]+) x ([\d.]+) pts(?: \((\w+)\))?)").match(info);
    EXPECT_TRUE(match.hasMatch()) << info.toStdString();
    return {QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble()), match.captured(3)};
}

CoverDatabase::CoverDatabase() {
    testsupport::createCompilationDatabase(path_);
    database_ = engine::Workspace::defaultWorkspace().openDatabase(path_);
}

qint64 CoverDatabase::addCompilation(const QString& format, const QString& coverMemo,
                                     qint64 sumTime, const QStringList& performers) {
    const int count = testsupport::queryRaw(path_, "SELECT count(*) FROM Compilation").toInt();
    testsupport::SampleCompilation compilation;
    compilation.name = "Road Songs" + (count > 0 ? QString(" %1").arg(count + 1) : QString());
    compilation.format = format;
    compilation.coverMemo = coverMemo;
    for (int i = 0; i < performers.size(); ++i) {
        compilation.tracks.append(
            {.performer = performers[i], .title = QString("Song %1").arg(i + 1)});
    }
    const qint64 id = testsupport::addSample(path_, compilation);
    testsupport::execRaw(path_, QString("UPDATE Compilation SET SumTime = %1 WHERE "
                                        "CompilationID_P = %2")
                                    .arg(sumTime)
                                    .arg(id));
    return id;
}

report_engine::PageModel CoverDatabase::cover(qint64 id) {
    return reports::buildCover(database_, id);
}

QString composedRtf(const QStringList& lines, const QString& family, double points) {
    QTextDocument document;
    document.setPlainText(lines.join(u'\n') + u'\n');
    QTextCharFormat font;
    font.setFontFamilies({family});
    font.setFontPointSize(points);
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    all.mergeCharFormat(font);
    font.setFontWeight(QFont::Bold);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextCursor performer(block);
        performer.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
        performer.mergeCharFormat(font);
    }
    return rtf::write(document);
}

QStringList numberedLines(int count) {
    QStringList lines;
    for (int i = 1; i <= count; ++i) {
        lines << QString("Performer%1   Song number %1").arg(i);
    }
    return lines;
}

}  // namespace reporttest
