#include "tape/Prompt.h"

#include <cstdio>

namespace cintal {

namespace {

class StderrPrompt : public Prompt {
public:
    Button Show(const Message& message) override {
        std::string line = FormatMessage(message);
        std::fwrite(line.data(), 1, line.size(), stderr);
        std::fputc('\n', stderr);
        return DefaultAnswer(message.buttons);
    }
};

StderrPrompt stderrPrompt;
Prompt* current = nullptr;

} // namespace

Prompt& CurrentPrompt() {
    return current ? *current : stderrPrompt;
}

void SetPrompt(Prompt* prompt) {
    current = prompt;
}

Button Ask(const std::string& text, const std::string& title, Icon icon, Buttons buttons) {
    return CurrentPrompt().Show(Message{text, title, icon, buttons, {}});
}

Button DefaultAnswer(Buttons buttons) {
    switch (buttons) {
    case Buttons::Ok:
    case Buttons::OkCancel:
        return Button::Ok;
    case Buttons::YesNo:
        return Button::No;
    case Buttons::YesNoCancel:
        return Button::Cancel;
    }
    return Button::Ok;
}

std::string FormatMessage(const Message& message) {
    std::string out;
    if (!message.title.empty()) out += "[" + message.title + "] ";
    out += message.text;
    if (!message.details.empty()) out += "\n" + message.details;
    return out;
}

Button ScriptedPrompt::Show(const Message& message) {
    shown.push_back(message);
    if (answers.empty()) return DefaultAnswer(message.buttons);
    Button b = answers.front();
    answers.pop_front();
    return b;
}

PromptScope::PromptScope(Prompt& p) : StandInScope(current, p) {}

} // namespace cintal
