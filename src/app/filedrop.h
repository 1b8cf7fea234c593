#pragma once

#include <QObject>
#include <QString>

class QWidget;

/// Takes a file that is dropped anywhere on a window, also over a box that would take its name for text. Nothing is
/// taken while a dialog is open.
class FileDrop : public QObject
{
    Q_OBJECT

public:
    /// The window owns this object.
    explicit FileDrop(QWidget &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void dropped(const QString &path);

private:
    QWidget &m_window;
};
