#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "shell/app_state.h"
#include "shell/database_commands.h"

namespace store {
class DataControl;
}

namespace shell {

// The open compilation database and the application-wide values, shared by every window, and
// the announcements of what changed in it. Windows do not reach into each other's widgets to
// show a change: whoever changes the database announces it here, and the data controls that
// follow the session read their rows again.
class Session : public QObject {
    Q_OBJECT
  public:
    explicit Session(QObject* parent = nullptr) : QObject(parent) {}

    AppState& state() { return state_; }
    const AppState& state() const { return state_; }
    engine::Database& database() { return state_.database; }
    bool isOpen() const { return state_.database.isOpen(); }

    // The database file commands. open() closes a database that is still open first (at most
    // one is open at a time) and announces databaseOpened on success; close() and abandon()
    // announce databaseClosing while the database is still usable, then close it.
    OpenOutcome open(const QString& path, platform::Dialogs& dialogs);
    void close();    // closes; the album links and TempSource end with the connection
    void abandon();  // after a failed load: closes without touching the file again
    // Compacts a file chosen by the user; an open database is closed first.
    bool compact(platform::Dialogs& dialogs, CommandFeedback& feedback);

    // Announcements, made by whoever changed the database (after the change is committed).
    void announceCompilationAdded(qint64 id) { emit compilationAdded(id); }
    void announceCompilationChanged(qint64 id) { emit compilationChanged(id); }
    void announceCompilationDeleted(qint64 id) { emit compilationDeleted(id); }
    // Tracks of a compilation were added, removed or changed (its sums with them).
    void announceTracksChanged(qint64 compilationId) { emit tracksChanged(compilationId); }

  signals:
    void databaseOpened();
    void databaseClosing();
    void compilationAdded(qint64 id);
    void compilationChanged(qint64 id);
    void compilationDeleted(qint64 id);
    void tracksChanged(qint64 compilationId);
    // A data control could not follow an announcement; its rows were dropped.
    void followFailed(int number, const QString& description);

  private:
    void announceClosing();

    AppState state_;
};

// A data control follows the session: it drops its rows when the database is about to close,
// and rereads them after the announcements that concern it. A failed reread drops its rows
// too and is reported through Session::followFailed. The connections end with the control.
//
// The list of compilations (rows keyed by CompilationID_P): each compilation's row follows its
// additions, changes, deletions and track changes (its sums).
void followCompilations(store::DataControl& control, Session& session);
// The tracks of one compilation (rows without a key of their own): read again whole when that
// compilation or its tracks change. compilationId is asked at each announcement, as the window
// may show another compilation by then; a negative id follows every compilation.
void followTracks(store::DataControl& control, Session& session,
                  std::function<qint64()> compilationId);
// Only the closing of the database.
void followDatabaseClosing(store::DataControl& control, Session& session);

}  // namespace shell
