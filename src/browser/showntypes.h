#pragma once

#include <QHash>
#include <QObject>
#include <QScopedValueRollback>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

class clsINI;

/// The recording types and which of them are shown: the built-in ones, then those of the catalog. The choices are kept
/// in the settings, in a section named after the catalog. Menu, type box and tree all mirror this list.
class ShownTypes : public QObject
{
    Q_OBJECT

public:
    /// `settings` must outlive this object.
    explicit ShownTypes(clsINI &settings);

    /// Builds the list anew: the fixed types, then the catalog's own.
    void LoadTypeMenu(const QString &catalogName, const QStringList &catalogTypes);

    /// Adds a type at the end and gives its position.
    int AddTypeMenuItem(const QString &typeName);

    /// Runs what may add many types, and signals the change once at its end. Gives what it gives.
    template<class Procedure>
    bool ChangeTogether(Procedure &&procedure)
    {
        bool result = false;
        {
            const QScopedValueRollback changing(m_isChanging, true);
            result = procedure();
        }
        if (std::exchange(m_hasChanged, false))
            emit changed();
        return result;
    }

    int count() const { return static_cast<int>(m_list.types.size()); }
    const QString &Name(int index) const { return m_list.types[static_cast<size_t>(index)].name; }
    bool IsShown(int index) const { return m_list.types[static_cast<size_t>(index)].shown; }
    /// The position of a type, -1 when it is not in the list. Names are compared exactly, the first match counts.
    int Find(const QString &typeName) const { return m_list.positions.value(typeName, -1); }

    /// Shows a hidden type or hides a shown one, and writes the choice to the settings.
    void Toggle(int index);

    /// The shown types in the order of the list, as the type box offers them.
    QStringList ShownNames() const;

signals:
    /// The list or a choice has changed.
    void changed();

private:
    struct Type
    {
        QString name;
        bool shown;
    };
    struct List
    {
        QString catalogName;
        std::vector<Type> types;
        QHash<QString, int> positions; ///< of the first type of each name
    };

    void Append(const QString &name);
    void SignalChange();

    clsINI &m_settings;
    List m_list;
    bool m_isChanging = false; ///< ChangeTogether is at work
    bool m_hasChanged = false; ///< and has something to signal
};
