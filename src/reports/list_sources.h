#pragma once

#include <QLocale>
#include <QString>

#include "report_engine/page_model.h"

// Where the track lists and the recording protocol read their rows, and the paper they print on.
namespace reports {

// One compilation's tracks in medium order, with the compilation's columns on every row.
QString compilationTracksStatement(qint64 compilationId);
// Every track on every compilation by performer and album; equal titles by compilation name
// and track number.
QString allTracksStatement();
// The albums a compilation's tracks come from, grouped by storage location first.
QString albumsNeededStatement(qint64 compilationId);

// The paper of the locale's printers: Letter where Letter is the custom, else A4, with the
// lists' margins.
report_engine::PageSetup listPaper(const QLocale& locale = QLocale::system());

}  // namespace reports
