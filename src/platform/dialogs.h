#pragma once
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace ketrel {

enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore };
enum class MsgIcon { None, Stop, Question, Exclamation, Information };
enum class MsgAnswer { Ok, Cancel, Yes, No, Retry, Abort, Ignore };

// One message box as the logic asks for it.
struct MessageBox {
    std::string title;
    std::string text;
    MsgButtons buttons = MsgButtons::Ok;
    MsgIcon icon = MsgIcon::None;
    bool systemModal = false;
};

// A question for the name of a file to write.
struct SaveFileQuestion {
    std::string title;
    std::string suggestedName;  // the file name offered first
    std::string filter;         // such as "CSV files (*.csv)"
};

// The first button of a box: what Enter presses and what a headless run answers.
MsgAnswer defaultAnswer(MsgButtons buttons);
// Cancel where the box has one, else its default: what a headless run answers a question.
MsgAnswer cancelOrDefault(MsgButtons buttons);

// Message boxes; the call returns the button pressed. Timers and serial events go on meanwhile.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual MsgAnswer show(const MessageBox& box) = 0;

    MsgAnswer message(std::string text, std::string title = "Ketrel", MsgIcon icon = MsgIcon::None,
                      MsgButtons buttons = MsgButtons::Ok) {
        return show(MessageBox{std::move(title), std::move(text), buttons, icon, false});
    }
    // Asks for the file to write; empty when the user cancelled. A run without a screen has
    // nobody to ask, so the question is cancelled there.
    virtual std::string askSaveFile(const SaveFileQuestion& question) {
        (void)question;
        return {};
    }
};

// Dialogs for tests: records every box and answers from a script, else with the default button.
class ScriptedDialogs : public Dialogs {
  public:
    MsgAnswer show(const MessageBox& box) override;
    void answerNext(MsgAnswer a) { script_.push_back(a); }
    const std::vector<MessageBox>& shown() const { return shown_; }
    // The titles of the boxes shown, in order.
    std::vector<std::string> titles() const {
        std::vector<std::string> v;
        for (const MessageBox& b : shown_)
            v.push_back(b.title);
        return v;
    }
    void clear() { shown_.clear(); }
    // A hook run when a box comes up, before it is answered (a test may act "while it shows").
    std::function<void(const MessageBox&)> onShow;
    // File questions: answered from their own script, else cancelled; each one is kept.
    std::string askSaveFile(const SaveFileQuestion& question) override;
    void answerNextSaveFile(std::string path) { fileScript_.push_back(std::move(path)); }
    std::vector<SaveFileQuestion> fileQuestions;

  private:
    std::deque<std::string> fileScript_;
    std::deque<MsgAnswer> script_;
    std::vector<MessageBox> shown_;
};

}  // namespace ketrel
