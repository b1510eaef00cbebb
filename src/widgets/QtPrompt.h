#pragma once

#include "tape/Prompt.h"

class QWidget;

namespace cintal {

// The desktop's message box, with the buttons in Spanish.
class QtPrompt : public Prompt {
public:
    Button Show(const Message& message) override;
};

} // namespace cintal
