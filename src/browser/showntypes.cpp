#include "showntypes.h"

#include "clsINI.h"
#include "recordingtypes.h"

using namespace Qt::StringLiterals;

namespace {

QString SettingKey(const QString &typeName)
{
    return u"Show-"_s + typeName;
}

} // namespace

ShownTypes::ShownTypes(clsINI &settings) : m_settings(settings)
{
    LoadTypeMenu({}, {});
}

void ShownTypes::LoadTypeMenu(const QString &catalogName, const QStringList &catalogTypes)
{
    m_catalogName = catalogName;
    m_types.clear();
    m_positions.clear();
    for (const RecordingType &type : kBuiltInTypes)
        Append(QString::fromLatin1(type.name.data(), static_cast<qsizetype>(type.name.size())));
    for (const QString &name : catalogTypes)
        Append(name);
    SignalChange();
}

int ShownTypes::AddTypeMenuItem(const QString &typeName)
{
    Append(typeName);
    SignalChange();
    return count() - 1;
}

void ShownTypes::SignalChange()
{
    m_hasChanged = m_isChanging;
    if (!m_isChanging)
        emit changed();
}

void ShownTypes::Append(const QString &name)
{
    if (!m_positions.contains(name))
        m_positions.insert(name, count());
    m_types.push_back({name, m_settings.ReadFlag(m_catalogName, SettingKey(name), true)});
}

/// A menu that could not be made anew when memory ran out may offer one that is gone.
void ShownTypes::Toggle(int index)
{
    if (index >= count())
        return;
    Type &type = m_types[static_cast<size_t>(index)];
    type.shown = !type.shown;
    m_settings.WriteFlag(m_catalogName, SettingKey(type.name), type.shown);
    SignalChange();
}

QStringList ShownTypes::ShownNames() const
{
    QStringList names;
    for (const Type &type : m_types) {
        if (type.shown)
            names.append(type.name);
    }
    return names;
}
