#pragma once
// Every message box of Cintal goes through one interface, so that the desktop
// shows a real box, the command line prints it, and tests script the answers.
// The engine knows nothing of any toolkit: it only sees this interface.

#include "tape/StandIn.h"

#include <deque>
#include <string>
#include <vector>

namespace cintal {

enum class Icon { None, Information, Exclamation, Critical, Question };
enum class Buttons { Ok, YesNo, YesNoCancel, OkCancel };
enum class Button { Ok, Yes, No, Cancel };

// Texts here are UTF-8: a message is shown, never written to a tape.
struct Message {
    std::string text;
    std::string title;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    // Longer text a box keeps folded away, such as a list of paths.
    std::string details = {};
};

class Prompt {
public:
    virtual ~Prompt() = default;
    virtual Button Show(const Message& message) = 0;
};

// The process-wide prompt. Until one is set, boxes go to standard error and
// are answered with their safe default (Aceptar or No).
Prompt& CurrentPrompt();
void SetPrompt(Prompt* prompt);

// Shorthand for the engine's boxes.
Button Ask(const std::string& text, const std::string& title = {}, Icon icon = Icon::None,
           Buttons buttons = Buttons::Ok);

// The safe answer of a box: what a user who only closes it would give.
Button DefaultAnswer(Buttons buttons);

// Writes a box to a stream-like sink as one or two lines; shared by the
// command line and the default prompt.
std::string FormatMessage(const Message& message);

// Records every box and answers from a queue; when the queue is empty it
// answers the box's default. Tests and headless runs use it.
class ScriptedPrompt : public Prompt {
public:
    Button Show(const Message& message) override;
    void Answer(Button b) { answers.push_back(b); }

    std::vector<Message> shown;
    std::deque<Button> answers;
};

// Sets a prompt for the lifetime of a scope and puts the previous one back.
class PromptScope : public StandInScope<Prompt> {
public:
    explicit PromptScope(Prompt& p);
};

} // namespace cintal
