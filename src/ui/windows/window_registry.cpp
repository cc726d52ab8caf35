#include "ui/windows/window_registry.h"

#include <utility>

#include "shell/session.h"
#include "ui/controls/window_keys.h"

namespace ui {

WindowRegistry::WindowRegistry(shell::Session& session, QObject* parent) : QObject(parent) {
    connect(&session, &shell::Session::databaseClosing, this, &WindowRegistry::closeAll);
}

void WindowRegistry::add(QWidget* window) {
    std::erase_if(windows_, [](const QPointer<QWidget>& known) { return known.isNull(); });
    windows_.emplace_back(window);
    closeWithKeys(*window);
}

QList<QWidget*> WindowRegistry::windows() const {
    QList<QWidget*> live;
    for (const QPointer<QWidget>& window : windows_) {
        if (window) {
            live << window.data();
        }
    }
    return live;
}

void WindowRegistry::closeAll() {
    // Closing one window may destroy others (its own children) or load new ones: walk a copy.
    const std::vector<QPointer<QWidget>> loaded = std::exchange(windows_, {});
    closingAll_ = true;
    for (auto it = loaded.crbegin(); it != loaded.crend(); ++it) {
        QWidget* window = it->data();
        if (window == nullptr) {
            continue;
        }
        // Closing takes the attribute away and leaves a deferred delete.
        const bool deletesItself = window->testAttribute(Qt::WA_DeleteOnClose);
        if (window->close() && deletesItself) {
            delete window;
        }
    }
    closingAll_ = false;
    // Windows still alive (refused, or hidden to be shown again) stay loaded, in their order.
    std::vector<QPointer<QWidget>> kept;
    for (const QPointer<QWidget>& window : loaded) {
        if (window) {
            kept.push_back(window);
        }
    }
    for (const QPointer<QWidget>& window : windows_) {
        if (window) {
            kept.push_back(window);
        }
    }
    windows_ = std::move(kept);
}

}  // namespace ui
