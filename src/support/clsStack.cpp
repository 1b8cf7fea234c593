#include "clsStack.h"

#include <QStringList>

using namespace Qt::StringLiterals;

QString clsStack::CallStack() const
{
    QStringList lines;
    for (const Entry &entry : m_entries) {
        lines +=
            u"Module: "_s + QString::fromUtf8(entry.moduleName) + u"\tProc: "_s + QString::fromUtf8(entry.procName);
    }
    return lines.join(u"\r\n"_s);
}
