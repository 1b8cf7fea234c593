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

/// Shows the ordinary pointer while a scope waits for the user, and then as many busy ones as there were.
class OrdinaryCursor
{
public:
    OrdinaryCursor()
    {
        for (; QGuiApplication::overrideCursor(); ++m_busy)
            QGuiApplication::restoreOverrideCursor();
    }
    ~OrdinaryCursor()
    {
        for (; m_busy > 0; --m_busy)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    OrdinaryCursor(const OrdinaryCursor &) = delete;
    OrdinaryCursor &operator=(const OrdinaryCursor &) = delete;

private:
    int m_busy = 0;
};

/// Gives the ordinary pointer back, however many scopes have asked for the busy one.
inline void ResetMousePointer()
{
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
}
