#include "platform/dialogs.h"

namespace platform {

void Dialogs::exclamation(const QString& text) {
    message({kAppTitle, text, MessageIcon::Exclamation, MessageButtons::Ok, MessageAnswer::Ok});
}

void Dialogs::information(const QString& text) {
    message({kAppTitle, text, MessageIcon::Information, MessageButtons::Ok, MessageAnswer::Ok});
}

bool Dialogs::askYesNo(const QString& text, MessageAnswer defaultAnswer) {
    return message({kAppTitle, text, MessageIcon::Question, MessageButtons::YesNo,
                    defaultAnswer}) == MessageAnswer::Yes;
}

std::optional<QFont> Dialogs::chooseFont(const QString& title, const QFont& initial) {
    return chooseFont(FontRequest{title, initial});
}

double limitPointSize(double points, const FontRequest& request) {
    if (request.minPointSize > 0 && points < request.minPointSize) {
        return request.minPointSize;
    }
    if (request.maxPointSize > 0 && points > request.maxPointSize) {
        return request.maxPointSize;
    }
    return points;
}

QStringList splitFilter(const QString& filter) {
    return filter.split(QLatin1Char('|'));
}

}  // namespace platform
