#include "reports/list_sources.h"

#include "store/compilation_queries.h"

namespace reports {

namespace {

// Replaces what follows the last occurrence of marker in statement.
QString replaceAfter(const QString& statement, const QString& marker, const QString& rest) {
    const qsizetype at = statement.lastIndexOf(marker);
    Q_ASSERT(at >= 0);
    return statement.left(at + marker.size()) + rest;
}

}  // namespace

QString compilationTracksStatement(qint64 compilationId) {
    return store::standardStatement(QStringLiteral("compilationtrack"), compilationId);
}

QString allTracksStatement() {
    return replaceAfter(store::standardStatement(QStringLiteral("songoncompilation")),
                        QStringLiteral("ORDER BY CompilationTrack.ArtistSort, "
                                       "CompilationTrack.Album_Title, "),
                        QStringLiteral("       CompilationTrack.Track_Title, Compilation.Name, "
                                       "CompilationTrack.TrackNo "));
}

QString albumsNeededStatement(qint64 compilationId) {
    return replaceAfter(store::standardStatement(QStringLiteral("albumneeded"), compilationId),
                        QStringLiteral("       Compilation.Box, Compilation.RecDate, "),
                        QStringLiteral("       CompilationTrack.AlbumLocation, "
                                       "CompilationTrack.AlbumArtistSort, "
                                       "       CompilationTrack.Album_Title "
                                       "HAVING Compilation.CompilationID_P = ") +
                            QString::number(compilationId));
}

report_engine::PageSetup listPaper(const QLocale& locale) {
    // The territories whose printers load Letter paper by default.
    static const QList<QLocale::Territory> letterTerritories{
        QLocale::UnitedStates, QLocale::Canada,   QLocale::Mexico,    QLocale::Philippines,
        QLocale::Chile,        QLocale::Colombia, QLocale::Venezuela, QLocale::PuertoRico};
    report_engine::PageSetup setup = letterTerritories.contains(locale.territory())
                                         ? report_engine::PageSetup::letter()
                                         : report_engine::PageSetup::a4();
    setup.leftMargin = 1134;  // 2 cm: room to punch for a folder
    setup.rightMargin = 850;
    setup.topMargin = 850;
    setup.bottomMargin = 850;
    return setup;
}

}  // namespace reports
