#include "qt/qt_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <utility>
#include <vector>

namespace ketrel {

namespace {

std::vector<std::pair<QMessageBox::StandardButton, MsgAnswer>> buttonsOf(MsgButtons b) {
    using B = QMessageBox;
    switch (b) {
        case MsgButtons::Ok:
            return {{B::Ok, MsgAnswer::Ok}};
        case MsgButtons::OkCancel:
            return {{B::Ok, MsgAnswer::Ok}, {B::Cancel, MsgAnswer::Cancel}};
        case MsgButtons::YesNo:
            return {{B::Yes, MsgAnswer::Yes}, {B::No, MsgAnswer::No}};
        case MsgButtons::YesNoCancel:
            return {
                {B::Yes, MsgAnswer::Yes}, {B::No, MsgAnswer::No}, {B::Cancel, MsgAnswer::Cancel}};
        case MsgButtons::RetryCancel:
            return {{B::Retry, MsgAnswer::Retry}, {B::Cancel, MsgAnswer::Cancel}};
        case MsgButtons::AbortRetryIgnore:
            return {{B::Abort, MsgAnswer::Abort},
                    {B::Retry, MsgAnswer::Retry},
                    {B::Ignore, MsgAnswer::Ignore}};
    }
    return {{B::Ok, MsgAnswer::Ok}};
}

QMessageBox::Icon iconOf(MsgIcon i) {
    switch (i) {
        case MsgIcon::Stop:
            return QMessageBox::Critical;
        case MsgIcon::Question:
            return QMessageBox::Question;
        case MsgIcon::Exclamation:
            return QMessageBox::Warning;
        case MsgIcon::Information:
            return QMessageBox::Information;
        case MsgIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

MsgAnswer QtDialogs::show(const MessageBox& box) {
    QMessageBox mb(QApplication::activeWindow());
    mb.setWindowTitle(QString::fromStdString(box.title));
    mb.setText(QString::fromStdString(box.text));
    mb.setIcon(iconOf(box.icon));
    // A system-modal box becomes application-modal: the desktop has no wider kind.
    mb.setWindowModality(Qt::ApplicationModal);
    if (box.systemModal) mb.setWindowFlag(Qt::WindowStaysOnTopHint);
    auto buttons = buttonsOf(box.buttons);
    QMessageBox::StandardButtons set;
    for (auto& [qb, answer] : buttons)
        set |= qb;
    mb.setStandardButtons(set);
    mb.setDefaultButton(buttons.front().first);
    // Escape or the window's close button answers Cancel or No where the box has one.
    MsgAnswer escape = cancelOrDefault(box.buttons);
    for (auto& [qb, answer] : buttons)
        if (answer == escape) mb.setEscapeButton(qb);
    int pressed = mb.exec();
    for (auto& [qb, answer] : buttons)
        if (pressed == qb) return answer;
    return escape;
}

std::string QtDialogs::askSaveFile(const SaveFileQuestion& question) {
    QString path = QFileDialog::getSaveFileName(
        QApplication::activeWindow(), QString::fromStdString(question.title),
        QString::fromStdString(question.suggestedName), QString::fromStdString(question.filter));
    return path.toStdString();
}

}  // namespace ketrel
