#pragma once

#include <QObject>

class QAction;

/// F1 in every window of the program: dialogs have no menu of their own, and that of the main window is out of reach
/// while one is open. Message boxes want an answer first.
class HelpKey : public QObject
{
    Q_OBJECT

public:
    /// The action runs only while it is enabled. It must outlive this object.
    explicit HelpKey(QAction &helpContents);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAction &m_helpContents;
};
