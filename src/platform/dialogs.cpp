#include "platform/dialogs.h"

namespace ketrel {

MsgAnswer defaultAnswer(MsgButtons buttons) {
    switch (buttons) {
        case MsgButtons::Ok:
        case MsgButtons::OkCancel:
            return MsgAnswer::Ok;
        case MsgButtons::YesNo:
        case MsgButtons::YesNoCancel:
            return MsgAnswer::Yes;
        case MsgButtons::RetryCancel:
            return MsgAnswer::Retry;
        case MsgButtons::AbortRetryIgnore:
            return MsgAnswer::Abort;
    }
    return MsgAnswer::Ok;
}

MsgAnswer cancelOrDefault(MsgButtons buttons) {
    switch (buttons) {
        case MsgButtons::OkCancel:
        case MsgButtons::YesNoCancel:
        case MsgButtons::RetryCancel:
            return MsgAnswer::Cancel;
        case MsgButtons::YesNo:
            return MsgAnswer::No;
        default:
            return defaultAnswer(buttons);
    }
}

MsgAnswer ScriptedDialogs::show(const MessageBox& box) {
    shown_.push_back(box);
    if (onShow) onShow(box);
    if (!script_.empty()) {
        MsgAnswer a = script_.front();
        script_.pop_front();
        return a;
    }
    return defaultAnswer(box.buttons);
}

std::string ScriptedDialogs::askSaveFile(const SaveFileQuestion& question) {
    fileQuestions.push_back(question);
    if (fileScript_.empty()) return {};
    std::string path = std::move(fileScript_.front());
    fileScript_.pop_front();
    return path;
}

}  // namespace ketrel
