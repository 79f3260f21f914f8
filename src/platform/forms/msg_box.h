#pragma once

#include <QString>
#include <deque>
#include <vector>

/// Message boxes: a text, a title, an icon, and either the one button "Aceptar" or "Sí" and "No".
namespace platform::MsgBox {

enum class Icon { None, Information, Question, Warning, Critical };
enum class Buttons { Ok, YesNo };
enum class Answer { Ok, Yes, No };

/// Shows a modal message box and returns the button pressed. Escape and the close box answer Ok,
/// but don't answer a question.
Answer show(const QString& text, const QString& title, Icon icon = Icon::None,
            Buttons buttons = Buttons::Ok);

/// One box that a script answered.
struct Asked {
    QString text;
    QString title;
    Icon icon;
    Buttons buttons;
};

/// While it lives, no box is shown: each is recorded and answered from the queue. A box that comes
/// when the queue is empty is recorded as unexpected and answered Ok or No. For tests.
class Script
{
public:
    Script();
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    void expect(Answer answer = Answer::Ok) { answers_.push_back(answer); }
    /// Takes back the answers that weren't asked for.
    void forgetAnswers() { answers_.clear(); }
    std::size_t answersLeft() const { return answers_.size(); }
    const std::vector<Asked>& asked() const { return asked_; }
    const std::vector<Asked>& unexpected() const { return unexpected_; }

private:
    friend Answer show(const QString&, const QString&, Icon, Buttons);
    Answer reply(const Asked& box);

    std::deque<Answer> answers_;
    std::vector<Asked> asked_;
    std::vector<Asked> unexpected_;
};

} // namespace platform::MsgBox
