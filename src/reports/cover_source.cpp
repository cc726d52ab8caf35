#include "reports/cover_source.h"

#include "query/time_text.h"
#include "store/compilation_queries.h"

namespace reports {

QString noCoverMessage(const QString& format) {
    return QStringLiteral("There is no cover available for the format: ") + format;
}

std::optional<QString> coverRefusal(const QString& format, int trackCount) {
    if (!store::coverKindOf(format)) {
        return noCoverMessage(format);
    }
    if (trackCount == 0) {
        return kNoTracksOnCompilation;
    }
    return std::nullopt;
}

QString playtimeText(double seconds) {
    QString text = query::formatTime(seconds);
    while (text.startsWith(u'0') && text.indexOf(u':') > 1) {
        text.remove(0, 1);
    }
    return text;
}

QVector<QString> runLastPerformers(const QVector<std::pair<int, QString>>& tracks) {
    QVector<QString> performers(kMaxPerformerSlots + 1);
    QVector<int> run;  // the slots of the current run, the last one included
    const auto endRun = [&] {
        for (int i = 0; i + 1 < run.size(); ++i) {
            performers[run[i]].clear();
        }
        run.clear();
    };
    for (const auto& [trackNo, performer] : tracks) {
        if (trackNo < 0 || trackNo > kMaxPerformerSlots) {
            break;
        }
        if (!run.isEmpty() && performers[run.last()] != performer) {
            endRun();
        }
        performers[trackNo] = performer;
        run.append(trackNo);
    }
    endRun();
    return performers;
}

}  // namespace reports
