#pragma once

#include <QString>
#include <QStringList>

#include "engine/database.h"
#include "report/page_model.h"
#include "support/temp_dir.h"

// A compilation database to print covers from, and ways to read a cover's page.
namespace covertest {

class CoverDatabase {
  public:
    CoverDatabase();
    ~CoverDatabase();

    // A compilation with the given cover text; its id is returned.
    qint64 addCompilation(const QString& name, const QString& format, const QString& coverMemo,
                          qint64 sumTime = 600);
    void addTrack(qint64 compilationId, int trackNo, const QString& performer,
                  const QString& title);
    report::PageModel cover(qint64 compilationId);

  private:
    testsupport::TempDir dir_;
    QString path_;
    qint64 nextId_ = 1;
    engine::Database database_;
};

// A cover text as the editor stores it: RTF, lines in the font, each line's first word (its
// performer) bold, and the line break after the last line that composed texts end with.
QString composedRtf(const QStringList& lines, const QString& family = QStringLiteral("Arial"),
                    double pointSize = 10);

QStringList numberedLines(int count);

// The one item of that control on the only page; fails the test when there is not exactly one.
report::PageItem onlyNamed(const report::PageModel& model, const QString& name);
bool hasNamed(const report::PageModel& model, const QString& name);
// What the cover drew on the page itself (frame, folds, rules), in drawing order.
QVector<report::PageItem> drawings(const report::PageModel& model);

}  // namespace covertest
