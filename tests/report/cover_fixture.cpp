#include "cover_fixture.h"

#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include "engine/workspace.h"
#include "reports/cover_report.h"
#include "rtf/rtf.h"
#include "support/databases.h"

namespace covertest {

namespace {

QString quoted(const QString& text) {
    return QStringLiteral("'") + QString(text).replace(u'\'', QStringLiteral("''")) +
           QStringLiteral("'");
}

}  // namespace

CoverDatabase::CoverDatabase() : path_(dir_.file(QStringLiteral("covers.mdb"))) {
    testsupport::createCompilationDatabase(path_);
    database_ = engine::Workspace::defaultWorkspace().openDatabase(path_);
}

CoverDatabase::~CoverDatabase() {
    database_.close();
}

qint64 CoverDatabase::addCompilation(const QString& name, const QString& format,
                                     const QString& coverMemo, qint64 sumTime) {
    const qint64 id = nextId_++;
    testsupport::execRaw(
        path_, QStringLiteral("INSERT INTO Compilation (CompilationID_P, Name, SumTrack, "
                              "SumTime, Format, C_Length, CoverMemo) VALUES (%1, %2, 1, %3, %4, "
                              "74, %5)")
                   .arg(id)
                   .arg(quoted(name))
                   .arg(sumTime)
                   .arg(quoted(format), quoted(coverMemo)));
    return id;
}

void CoverDatabase::addTrack(qint64 compilationId, int trackNo, const QString& performer,
                             const QString& title) {
    testsupport::execRaw(path_,
                         QStringLiteral("INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, "
                                        "Track_Artist_Name, ArtistSort, Track_Title, Length) "
                                        "VALUES (%1, %2, %3, %3, %4, 200)")
                             .arg(compilationId)
                             .arg(trackNo)
                             .arg(quoted(performer), quoted(title)));
}

report::PageModel CoverDatabase::cover(qint64 compilationId) {
    return reports::buildCover(database_, compilationId);
}

QString composedRtf(const QStringList& lines, const QString& family, double pointSize) {
    QTextDocument document;
    document.setPlainText(lines.join(u'\n') + u'\n');
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    QTextCharFormat font;
    font.setFontFamilies({family});
    font.setFontPointSize(pointSize);
    all.mergeCharFormat(font);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextCursor performer(block);
        performer.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
        QTextCharFormat bold;
        bold.setFontWeight(QFont::Bold);
        performer.mergeCharFormat(bold);
    }
    return rtf::write(document);
}

QStringList numberedLines(int count) {
    QStringList lines;
    for (int i = 1; i <= count; ++i) {
        lines << QStringLiteral("Performer%1   Song number %1").arg(i);
    }
    return lines;
}

report::PageItem onlyNamed(const report::PageModel& model, const QString& name) {
    EXPECT_EQ(model.pages.size(), 1);
    QVector<report::PageItem> found;
    for (const report::PageItem& item : model.pages.value(0).items) {
        if (item.name == name) {
            found.append(item);
        }
    }
    EXPECT_EQ(found.size(), 1) << name.toStdString();
    return found.value(0);
}

bool hasNamed(const report::PageModel& model, const QString& name) {
    const auto& items = model.pages.value(0).items;
    return std::any_of(items.begin(), items.end(),
                       [&](const report::PageItem& item) { return item.name == name; });
}

QVector<report::PageItem> drawings(const report::PageModel& model) {
    QVector<report::PageItem> found;
    for (const report::PageItem& item : model.pages.value(0).items) {
        if (item.name.isEmpty()) {
            found.append(item);
        }
    }
    return found;
}

}  // namespace covertest
