#pragma once

#include <QApplication>

/// The application object. An exception that some handler let through is reported here instead of ending the program,
/// and keys that would reach a box or list by mistake end here.
class Application : public QApplication
{
    Q_OBJECT

public:
    Application(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
