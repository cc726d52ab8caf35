#include "shell/session.h"

#include "engine/jet_error.h"
#include "store/data_control.h"

namespace shell {

OpenOutcome Session::open(const QString& path, platform::Dialogs& dialogs) {
    if (isOpen()) {
        close();
    }
    const OpenOutcome outcome = openCompilationDatabase(path, state_, dialogs);
    if (outcome == OpenOutcome::Opened) {
        emit databaseOpened();
    }
    return outcome;
}

void Session::announceClosing() {
    if (isOpen()) {
        emit databaseClosing();
    }
}

void Session::close() {
    announceClosing();
    closeCompilationDatabase(state_);
}

void Session::abandon() {
    announceClosing();
    abandonCompilationDatabase(state_);
}

bool Session::compact(platform::Dialogs& dialogs, CommandFeedback& feedback) {
    if (isOpen()) {
        close();
    }
    return compactDatabase(dialogs, feedback);
}

namespace {

// Runs a reread; a failure leaves no outdated rows behind and is passed on.
void reread(store::DataControl& control, Session& session, const std::function<void()>& readAgain) {
    try {
        readAgain();
    } catch (const engine::JetError& error) {
        control.clear();
        emit session.followFailed(error.number(), error.description());
    }
}

}  // namespace

void followDatabaseClosing(store::DataControl& control, Session& session) {
    QObject::connect(&session, &Session::databaseClosing, &control, &store::DataControl::clear);
}

void followCompilations(store::DataControl& control, Session& session) {
    control.setKeyField(QStringLiteral("CompilationID_P"));
    followDatabaseClosing(control, session);
    const auto rereadRow = [&control, &session](qint64 id) {
        reread(control, session, [&] { control.rereadRow(id); });
    };
    for (auto signal : {&Session::compilationAdded, &Session::compilationChanged,
                        &Session::compilationDeleted, &Session::tracksChanged}) {
        QObject::connect(&session, signal, &control, rereadRow);
    }
}

void followTracks(store::DataControl& control, Session& session,
                  std::function<qint64()> compilationId) {
    followDatabaseClosing(control, session);
    const auto rereadRows = [&control, &session, compilationId](qint64 id) {
        const qint64 shown = compilationId();
        if (shown < 0 || shown == id) {
            reread(control, session, [&] { control.rereadRows(); });
        }
    };
    for (auto signal :
         {&Session::compilationChanged, &Session::compilationDeleted, &Session::tracksChanged}) {
        QObject::connect(&session, signal, &control, rereadRows);
    }
}

}  // namespace shell
