#include "showntypes.h"

#include "clsINI.h"
#include "recordingtypes.h"

#include <QScopeGuard>

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

/// A list that broke off could lack built-in types, so the earlier one comes back.
void ShownTypes::LoadTypeMenu(const QString &catalogName, const QStringList &catalogTypes)
{
    List earlier = std::exchange(m_list, {.catalogName = catalogName, .types = {}, .positions = {}});
    auto goBack = qScopeGuard([&] { m_list = std::move(earlier); });
    for (const RecordingType &type : kBuiltInTypes)
        Append(QString::fromLatin1(type.name.data(), static_cast<qsizetype>(type.name.size())));
    for (const QString &name : catalogTypes)
        Append(name);
    goBack.dismiss();
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

/// A position is known only when there is a type at it, also when memory runs out.
void ShownTypes::Append(const QString &name)
{
    m_list.types.push_back({name, m_settings.ReadFlag(m_list.catalogName, SettingKey(name), true)});
    if (!m_list.positions.contains(name))
        m_list.positions.insert(name, count() - 1);
}

/// A menu that could not be made anew when memory ran out may offer one that is gone.
void ShownTypes::Toggle(int index)
{
    if (index >= count())
        return;
    Type &type = m_list.types[static_cast<size_t>(index)];
    type.shown = !type.shown;
    m_settings.WriteFlag(m_list.catalogName, SettingKey(type.name), type.shown);
    SignalChange();
}

QStringList ShownTypes::ShownNames() const
{
    QStringList names;
    for (const Type &type : m_list.types) {
        if (type.shown)
            names.append(type.name);
    }
    return names;
}
