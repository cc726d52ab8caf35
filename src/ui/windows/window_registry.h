#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <vector>

namespace shell {
class Session;
}

namespace ui {

// The windows the main window and the windows it opened have loaded, in the order they were
// loaded. When the database is about to close, or the program ends, they are closed from the
// last loaded to the first while the database is still open, so each can let go of what it
// reads. A window registers itself when it is loaded; it is forgotten when it is destroyed.
// Registered windows return to their opener with Escape and Ctrl+W.
class WindowRegistry : public QObject {
    Q_OBJECT
  public:
    // Closes the windows whenever the session's database is about to close.
    explicit WindowRegistry(shell::Session& session, QObject* parent = nullptr);

    void add(QWidget* window);
    QList<QWidget*> windows() const;  // the live ones, in load order

    // Closes every window, from the last loaded to the first. A window that deletes itself on
    // closing is deleted at once, so nothing it holds outlives the database; one that refuses
    // to close stays open (its bound data controls drop their rows with the database).
    void closeAll();
    // True while closeAll runs: windows then close without asking.
    bool closingAll() const { return closingAll_; }

  private:
    std::vector<QPointer<QWidget>> windows_;
    bool closingAll_ = false;
};

}  // namespace ui
