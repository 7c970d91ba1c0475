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

  private:
    std::deque<MsgAnswer> script_;
    std::vector<MessageBox> shown_;
};

}  // namespace ketrel
