#include "ui/windows/screen_colours.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "shell/navigation.h"

namespace ui {

double screenColourCount(const QWidget& widget) {
    const QScreen* screen =
        widget.screen() != nullptr ? widget.screen() : QGuiApplication::primaryScreen();
    return shell::colourCount(screen != nullptr ? screen->depth() : 24);
}

}  // namespace ui
