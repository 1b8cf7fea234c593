#include "QtPrompts.h"

#include "controls.h"
#include "modCommonDialog.h"
#include "modOpenFolder.h"
#include "modaldialog.h"

#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int kShortestInput = 50; ///< letters

QMessageBox::Icon BoxIcon(UserPrompts::Icon icon)
{
    switch (icon) {
    case UserPrompts::Icon::Information:
        return QMessageBox::Information;
    case UserPrompts::Icon::Question:
        return QMessageBox::Question;
    case UserPrompts::Icon::Critical:
        return QMessageBox::Critical;
    case UserPrompts::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

void SetButtons(QMessageBox &box, UserPrompts::Buttons buttons)
{
    switch (buttons) {
    case UserPrompts::Buttons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case UserPrompts::Buttons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        break;
    case UserPrompts::Buttons::YesNoDefaultNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
        break;
    case UserPrompts::Buttons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::Cancel);
        break;
    case UserPrompts::Buttons::YesNoOrNeither:
        // Left to itself, the box takes its closing for a No.
        SetButtons(box, UserPrompts::Buttons::YesNoCancel);
        box.button(QMessageBox::Cancel)->hide();
        break;
    }
}

UserPrompts::Answer AnswerOf(int button)
{
    switch (button) {
    case QMessageBox::Yes:
        return UserPrompts::Answer::Yes;
    case QMessageBox::No:
        return UserPrompts::Answer::No;
    case QMessageBox::Cancel:
        return UserPrompts::Answer::Cancel;
    default:
        return UserPrompts::Answer::Ok;
    }
}

QString WithPlainLineEnds(QString text)
{
    return text.replace(u"\r\n"_s, u"\n"_s);
}

} // namespace

UserPrompts::Answer QtPrompts::Message(const QString &text, const QString &title, Icon icon, Buttons buttons)
{
    QMessageBox box(DialogOwner(m_mainWindow));
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(WithPlainLineEnds(ShownText(text)));
    box.setIcon(BoxIcon(icon));
    SetButtons(box, buttons);
    return AnswerOf(ShowModal(box));
}

QString QtPrompts::Input(const QString &prompt, const QString &title, const QString &proposed)
{
    QInputDialog dialog(DialogOwner(m_mainWindow));
    dialog.setWindowTitle(title);
    // The label belongs to the line edit, which makes "&" a mnemonic.
    dialog.setLabelText(ShownCaption(WithPlainLineEnds(prompt)));
    dialog.findChild<QLabel *>()->setTextFormat(Qt::PlainText);
    dialog.setInputMode(QInputDialog::TextInput);
    auto *edit = dialog.findChild<QLineEdit *>();
    edit->setMaxLength(std::numeric_limits<int>::max());
    // The title needs the room as much as the text.
    edit->setMinimumWidth(kShortestInput * edit->fontMetrics().averageCharWidth());
    dialog.setTextValue(proposed);
    edit->selectAll();
    if (ShowModal(dialog) != QDialog::Accepted)
        return {};
    // Pasted text keeps its line breaks in a line edit; what is asked for is one line.
    return dialog.textValue().removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
}

QString QtPrompts::OpenFile(const FileRequest &request)
{
    return OpenFileDialog(DialogOwner(m_mainWindow), request);
}

QString QtPrompts::SaveFile(const FileRequest &request)
{
    return SaveFileDialog(DialogOwner(m_mainWindow), request);
}

void QtPrompts::OpenWithDefaultProgram(const QString &path)
{
    OpenFileWithDefaultProgram(path);
}
