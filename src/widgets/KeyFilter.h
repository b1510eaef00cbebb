#pragma once
// The key events of the original controls: a key press carries a character
// code that the handler may swallow (by returning 0), and a key release
// follows every key, whichever it is. Keys that type nothing (cursor keys,
// Shift) raise no key press, only their release.

#include <QObject>
#include <functional>

class QKeyEvent;

namespace cintal {

class KeyFilter : public QObject {
public:
    // onPress gets the character code and returns the one to hand on, or 0.
    KeyFilter(QObject* watched, std::function<int(int)> onPress,
              std::function<void()> onRelease = {});

    // The character code a key event stands for, or 0 for a key that types
    // nothing.
    static int CharacterCode(const QKeyEvent* event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<int(int)> onPress;
    std::function<void()> onRelease;
};

} // namespace cintal
