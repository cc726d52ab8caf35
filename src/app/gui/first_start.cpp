#include "gui/first_start.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <stdexcept>

#include "demo/demo_collection.h"
#include "platform/program_folder.h"

namespace app {

namespace {

const QString kDemo = QStringLiteral("demo.mdb");
const QString kDemoAlbums = QStringLiteral("demo-albums.mdb");

// Both files are made in a scratch folder beside them; the compilation database, whose
// presence means the demo is there, is moved in last.
void writeDemoInto(const QString& folder) {
    QTemporaryDir work(folder + QStringLiteral("/.demo-XXXXXX"));
    if (!work.isValid()) {
        throw std::runtime_error(work.errorString().toStdString());
    }
    demo::writeDemo(work.filePath(kDemo), work.filePath(kDemoAlbums));
    const QString albums = folder + QLatin1Char('/') + kDemoAlbums;
    // An album file left by an earlier demo is the same generated collection: it stays.
    if (!QFileInfo::exists(albums) && !QFile::rename(work.filePath(kDemoAlbums), albums)) {
        throw std::runtime_error("cannot move the demo albums into " + folder.toStdString());
    }
    if (!QFile::rename(work.filePath(kDemo), folder + QLatin1Char('/') + kDemo)) {
        throw std::runtime_error("cannot move the demo into " + folder.toStdString());
    }
}

}  // namespace

std::optional<QString> firstStartDemo(platform::Dialogs& dialogs) {
    if (!platform::programLayout().installed) {
        return std::nullopt;
    }
    const QString folder = platform::dataFolder();
    const QString demo = folder + QLatin1Char('/') + kDemo;
    if (QFileInfo::exists(demo)) {
        return std::nullopt;
    }
    try {
        writeDemoInto(folder);
    } catch (const std::exception& error) {  // the engine's errors among them
        dialogs.exclamation(QStringLiteral("The demo database cannot be made in '%1': %2")
                                .arg(folder, QString::fromUtf8(error.what())));
        return std::nullopt;
    }
    return demo;
}

}  // namespace app
