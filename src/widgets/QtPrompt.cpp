#include "widgets/QtPrompt.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

namespace cintal {

namespace {

// A box with an icon the table lacks shows none.
constexpr std::pair<Icon, QMessageBox::Icon> kBoxIcons[] = {
    {Icon::Information, QMessageBox::Information},
    {Icon::Exclamation, QMessageBox::Warning},
    {Icon::Critical, QMessageBox::Critical},
    {Icon::Question, QMessageBox::Question},
};

} // namespace

Button QtPrompt::Show(const Message& message) {
    QMessageBox box(QApplication::activeWindow());
    box.setText(QString::fromStdString(message.text));
    if (!message.details.empty()) box.setDetailedText(QString::fromStdString(message.details));
    box.setWindowTitle(message.title.empty() ? QStringLiteral("Cintal")
                                             : QString::fromStdString(message.title));
    for (const auto& [icon, boxIcon] : kBoxIcons)
        if (icon == message.icon) box.setIcon(boxIcon);
    struct Choice {
        const char* text;
        Button button;
        QMessageBox::ButtonRole role;
    };
    std::vector<Choice> choices;
    switch (message.buttons) {
    case Buttons::Ok:
        choices = {{"Aceptar", Button::Ok, QMessageBox::AcceptRole}};
        break;
    case Buttons::OkCancel:
        choices = {{"Aceptar", Button::Ok, QMessageBox::AcceptRole},
                   {"Cancelar", Button::Cancel, QMessageBox::RejectRole}};
        break;
    case Buttons::YesNo:
        choices = {{"Sí", Button::Yes, QMessageBox::YesRole},
                   {"No", Button::No, QMessageBox::NoRole}};
        break;
    case Buttons::YesNoCancel:
        choices = {{"Sí", Button::Yes, QMessageBox::YesRole},
                   {"No", Button::No, QMessageBox::NoRole},
                   {"Cancelar", Button::Cancel, QMessageBox::RejectRole}};
        break;
    }
    std::vector<QAbstractButton*> made;
    for (const Choice& c : choices)
        made.push_back(box.addButton(QString::fromUtf8(c.text), c.role));
    box.setDefaultButton(static_cast<QPushButton*>(made.front()));
    if (message.buttons == Buttons::YesNo) box.setEscapeButton(made.back());
    box.exec();
    for (std::size_t i = 0; i < made.size(); ++i)
        if (box.clickedButton() == made[i]) return choices[i].button;
    return DefaultAnswer(message.buttons);
}

} // namespace cintal
