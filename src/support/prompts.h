#pragma once

#include <QString>

/// Every question, message and file dialog of the program. The real one (QtPrompts) shows dialogs; tests answer from a
/// script.
class UserPrompts
{
public:
    enum class Icon { None, Information, Question, Critical };
    enum class Buttons {
        Ok,
        YesNo,
        YesNoDefaultNo,
        YesNoCancel,
        YesNoOrNeither, ///< closing the box is no answer: Cancel, for which there is no button
    };
    enum class Answer { Ok, Yes, No, Cancel };

    /// What an open or save dialog starts from. Filters are pairs of description and pattern separated by "|".
    struct FileRequest
    {
        QString title;
        QString filter;
        QString folder;    ///< the folder in which the dialog starts
        QString extension; ///< added to a name without one of the filter's, no dot
        QString proposed;  ///< proposed file name or path
    };

    UserPrompts() = default;
    UserPrompts(const UserPrompts &) = delete;
    UserPrompts &operator=(const UserPrompts &) = delete;
    virtual ~UserPrompts() = default;

    /// Shows a message and waits. Closing the box answers Cancel where that is an answer, else No, else Ok.
    virtual Answer
    Message(const QString &text, const QString &title, Icon icon = Icon::None, Buttons buttons = Buttons::Ok) = 0;

    /// Asks for a line of text; empty when cancelled.
    virtual QString Input(const QString &prompt, const QString &title, const QString &proposed) = 0;

    /// Asks for an existing file; its full path, empty when cancelled.
    virtual QString OpenFile(const FileRequest &request) = 0;

    /// Asks where to save, and asks before an existing file is chosen; the full path, empty when cancelled.
    virtual QString SaveFile(const FileRequest &request) = 0;

    /// Opens a file or an address with the system's default program for it. Whether that works is not checked.
    virtual void OpenWithDefaultProgram(const QString &path) = 0;
};
