#pragma once

#include <QString>
#include <optional>

namespace engine {
class Database;
}
namespace ui {
class OverviewWindow;
}

namespace app {

// Pictures of the covers of the first MD and the first CD-ROM compilation with tracks, their
// texts composed and set as the editor does, and of that CD-ROM cover with a text too long for
// its title and time: each as a page and in the viewer the print tool opens on it. The covers'
// texts are changed in the window's database. False when one is missing or cannot be written.
// Then the printer calibration dialog and its test page.
bool coverPictures(ui::OverviewWindow& window, const QString& folder);

// The first compilation of the format (in lower case) with tracks, by name.
std::optional<qint64> firstWithTracks(engine::Database& database, const QString& format);

}  // namespace app
