#pragma once

#include <QAbstractListModel>
#include <QStringList>

/// Lines of a list window. Very long ones are cut where they are shown.
class LinesModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    const QStringList &Lines() const { return m_lines; }
    void SetLines(const QStringList &lines);

    /// The shown text of the line with the most characters.
    const QString &Longest() const { return m_longest; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QStringList m_lines;
    QString m_longest;
};
