#include "platform/scripted_dialogs.h"

namespace platform {

MessageAnswer ScriptedDialogs::message(const MessageRequest& request) {
    messages_.push_back(request);
    if (messageAnswers_.empty()) {
        return request.defaultAnswer;
    }
    MessageAnswer answer = messageAnswers_.front();
    messageAnswers_.pop_front();
    return answer;
}

std::optional<QString> ScriptedDialogs::openFile(const FileRequest& request) {
    fileRequests_.push_back(request);
    return nextFileAnswer();
}

std::optional<QString> ScriptedDialogs::saveFile(const FileRequest& request) {
    saveRequests_.push_back(request);
    return nextFileAnswer();
}

std::optional<QString> ScriptedDialogs::nextFileAnswer() {
    if (fileAnswers_.empty()) {
        return std::nullopt;
    }
    const auto [given, path] = fileAnswers_.front();
    fileAnswers_.pop_front();
    return given ? std::optional<QString>(path) : std::nullopt;
}

std::optional<QFont> ScriptedDialogs::chooseFont(const FontRequest& request) {
    fontRequests_.push_back(request);
    if (fontAnswers_.empty()) {
        return std::nullopt;
    }
    auto [given, font] = fontAnswers_.front();
    fontAnswers_.pop_front();
    if (!given) {
        return std::nullopt;
    }
    font.setPointSizeF(limitPointSize(font.pointSizeF(), request));
    return font;
}

void ScriptedDialogs::clear() {
    messageAnswers_.clear();
    fileAnswers_.clear();
    fontAnswers_.clear();
    messages_.clear();
    fileRequests_.clear();
    saveRequests_.clear();
    fontRequests_.clear();
}

}  // namespace platform
