#include "widgets/KeyFilter.h"

#include <QKeyEvent>

namespace cintal {

KeyFilter::KeyFilter(QObject* watched, std::function<int(int)> onPress,
                     std::function<void()> onRelease)
    : QObject(watched), onPress(std::move(onPress)), onRelease(std::move(onRelease)) {
    watched->installEventFilter(this);
}

int KeyFilter::CharacterCode(const QKeyEvent* event) {
    // Tab moves the focus and Escape closes the window: neither types.
    switch (event->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
        return 0;
    default:
        break;
    }
    const QString text = event->text();
    if (!text.isEmpty()) return text.at(0).unicode();
    // Some platforms give Enter and Backspace no text.
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Backspace:
        return 8;
    default:
        break;
    }
    // A control chord types its control character.
    if (event->modifiers() & Qt::ControlModifier && event->key() >= Qt::Key_A &&
        event->key() <= Qt::Key_Z)
        return event->key() - Qt::Key_A + 1;
    return 0;
}

bool KeyFilter::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::KeyPress && onPress) {
        const int code = CharacterCode(static_cast<QKeyEvent*>(event));
        if (code != 0 && onPress(code) == 0) return true;
    } else if (event->type() == QEvent::KeyRelease && onRelease) {
        if (!static_cast<QKeyEvent*>(event)->isAutoRepeat()) onRelease();
    }
    return false;
}

} // namespace cintal
