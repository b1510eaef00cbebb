#pragma once
// The engine's boxes take UTF-8 text; the code above it speaks QString.

#include "tape/Prompt.h"

#include <QString>

namespace cintal {

inline Button Ask(const QString& text, const QString& title = {}, Icon icon = Icon::None,
                  Buttons buttons = Buttons::Ok) {
    return Ask(text.toStdString(), title.toStdString(), icon, buttons);
}

// A literal would fit both overloads above and below it alike.
inline Button Ask(const char* text, const char* title = nullptr, Icon icon = Icon::None,
                  Buttons buttons = Buttons::Ok) {
    return Ask(std::string(text), std::string(title ? title : ""), icon, buttons);
}

} // namespace cintal
