#pragma once

#include <QApplication>

/// The application object. An exception that some handler let through is reported here instead of ending the program.
class Application : public QApplication
{
    Q_OBJECT

public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override;
};
