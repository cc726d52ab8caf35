#pragma once

#include <QSize>
#include <QString>

namespace engine {
class Database;
}

namespace platform {
class Dialogs;
}

class QWidget;

namespace ui {

class ReportPreviewWindow;

// The cover viewer's window measures its viewer plus room for the title bar and borders, in
// twips at the screen's logical resolution.
inline constexpr QSize kCoverViewerTwips(11000 + 90, 8200 + 400);

// Opens a new cover viewer on the compilation's cover for its format (the caller has refused
// formats without a cover): the list preview captioned and zoomed for the cover, sized as
// above, at the screen's top left corner, not modal and owned by the owner. The cover is laid
// out now, so the viewer keeps this compilation whatever the owner shows later; several may be
// open at once. Throws what reports::buildCover throws.
ReportPreviewWindow* showCover(engine::Database& database, qint64 compilationId,
                               const QString& format, platform::Dialogs& dialogs, QWidget* owner);

}  // namespace ui
