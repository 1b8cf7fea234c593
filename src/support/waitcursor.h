#pragma once

#include <QCursor>
#include <QGuiApplication>

/// Shows the busy pointer while a scope runs. An error report that opens inside the scope takes all busy pointers away
/// for good; Qt ignores the restoring of one that is gone, and since scopes nest, none that is left can belong to
/// another.
class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

/// Gives the ordinary pointer back, however many scopes have asked for the busy one.
inline void ResetMousePointer()
{
    while (QGuiApplication::overrideCursor() != nullptr) {
        QGuiApplication::restoreOverrideCursor();
    }
}
