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

namespace {

class ScriptedProgress : public Progress {
  public:
    ScriptedProgress(int cancelAfter, int& reports, QString& lastLine)
        : cancelAfter_(cancelAfter), reports_(reports), lastLine_(lastLine) {}
    void report(const QString& line) override {
        ++reports_;
        lastLine_ = line;
    }
    bool cancelled() const override { return cancelAfter_ >= 0 && reports_ >= cancelAfter_; }

  private:
    int cancelAfter_;
    int& reports_;
    QString& lastLine_;
};

}  // namespace

std::unique_ptr<Progress> ScriptedDialogs::startProgress(const QString&) {
    return std::make_unique<ScriptedProgress>(cancelAfter_, progressReports_, lastProgressLine_);
}

void ScriptedDialogs::clear() {
    messageAnswers_.clear();
    fileAnswers_.clear();
    fontAnswers_.clear();
    messages_.clear();
    fileRequests_.clear();
    saveRequests_.clear();
    fontRequests_.clear();
    cancelAfter_ = -1;
    progressReports_ = 0;
    lastProgressLine_.clear();
}

}  // namespace platform
