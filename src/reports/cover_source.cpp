#include "reports/cover_source.h"

#include "query/time_text.h"

namespace reports {

std::optional<CoverKind> coverKindOf(const QString& format) {
    const QString lower = format.toLower();
    if (lower == QLatin1String("md")) {
        return CoverKind::Md;
    }
    if (lower == QLatin1String("cd-rom")) {
        return CoverKind::CdRom;
    }
    return std::nullopt;
}

QString noCoverMessage(const QString& format) {
    return QStringLiteral("There is no cover available for the format: ") + format;
}

std::optional<QString> coverRefusal(const QString& format, int trackCount) {
    if (!coverKindOf(format)) {
        return noCoverMessage(format);
    }
    if (trackCount == 0) {
        return kNoTracksOnCompilation;
    }
    return std::nullopt;
}

QString coverSourceStatement(qint64 compilationId) {
    return QStringLiteral(
               "SELECT   Compilation.Name AS C_Name, Compilation.SumTrack AS "
               "C_SumTrack, "
               "         Compilation.SumTime AS C_SumTime, "
               "         Compilation.Manufacturer AS Manufacturer, "
               "         Compilation.C_Length, Compilation.Format AS C_Format, "
               "         Compilation.Box AS C_Box, Compilation.CompilationID_P, "
               "         Compilation.CoverMemo as CoverMemo, "
               "         Compilation.RecDate AS RecDate, Compilation.Notes AS C_Notes "
               "FROM     Compilation "
               "WHERE    Compilation.CompilationID_P = ") +
           QString::number(compilationId) + QStringLiteral(" ORDER BY Compilation.Name");
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
