#include "cli/album_link.h"

#include "cli/terminal_dialogs.h"
#include "store/album_source.h"

namespace cli {

bool connectAlbumFile(engine::Database& database, const QString& albumFile,
                      store::AlbumSourceState& state, Streams streams) {
    TerminalDialogs dialogs(streams.err, errorIsTerminal());
    dialogs.answerFile(albumFile);
    store::EditorConnection editor;
    editor.isSaved = true;
    store::connectAlbumDatabase(database, dialogs, state, editor);
    for (const platform::MessageRequest& message : dialogs.messages()) {
        streams.err << QString(message.text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
                    << Qt::endl;
        if (!message.details.isEmpty()) {
            streams.err << message.details << Qt::endl;
        }
    }
    if (editor.albumConnected) {
        return true;  // a damaged album file was reported above
    }
    if (dialogs.messages().empty()) {
        streams.err << "The album database could not be connected." << Qt::endl;
    }
    return false;
}

}  // namespace cli
