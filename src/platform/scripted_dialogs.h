#pragma once

#include <deque>
#include <vector>

#include "platform/dialogs.h"

namespace platform {

// Answers dialogs from a script and records what was asked. Used by tests and by the
// screenshot mode, where no person sits in front of the program.
class ScriptedDialogs : public Dialogs {
  public:
    MessageAnswer message(const MessageRequest& request) override;
    std::optional<QString> openFile(const FileRequest& request) override;
    std::optional<QString> saveFile(const FileRequest& request) override;
    using Dialogs::chooseFont;
    std::optional<QFont> chooseFont(const FontRequest& request) override;
    // Counts the reports and keeps the last line; cancels once cancelProgressAfter's count of
    // reports has been made.
    std::unique_ptr<Progress> startProgress(const QString& title) override;

    // Queue the answers; an empty queue answers a message with its default answer,
    // a file dialog with Cancel and a font dialog with Cancel. Open and save dialogs take their
    // answers from the same queue, in the order they are shown.
    void answerMessage(MessageAnswer answer) { messageAnswers_.push_back(answer); }
    void answerFile(const std::optional<QString>& path) {
        fileAnswers_.push_back({path.has_value(), path.value_or(QString())});
    }
    void answerFont(const std::optional<QFont>& font) {
        fontAnswers_.push_back({font.has_value(), font.value_or(QFont())});
    }

    void cancelProgressAfter(int reports) { cancelAfter_ = reports; }
    int progressReports() const { return progressReports_; }
    QString lastProgressLine() const { return lastProgressLine_; }

    const std::vector<MessageRequest>& messages() const { return messages_; }
    const std::vector<FileRequest>& fileRequests() const { return fileRequests_; }
    const std::vector<FileRequest>& saveRequests() const { return saveRequests_; }
    const std::vector<FontRequest>& fontRequests() const { return fontRequests_; }
    QString lastMessageText() const {
        return messages_.empty() ? QString() : messages_.back().text;
    }
    void clear();

  private:
    std::optional<QString> nextFileAnswer();

    std::deque<MessageAnswer> messageAnswers_;
    // Answers as (given, value): false stands for Cancel.
    std::deque<std::pair<bool, QString>> fileAnswers_;
    std::deque<std::pair<bool, QFont>> fontAnswers_;
    std::vector<MessageRequest> messages_;
    std::vector<FileRequest> fileRequests_;
    std::vector<FileRequest> saveRequests_;
    std::vector<FontRequest> fontRequests_;
    int cancelAfter_ = -1;  // never
    int progressReports_ = 0;
    QString lastProgressLine_;
};

}  // namespace platform
