#include "linesmodel.h"

#include "showntext.h"

#include <algorithm>

void LinesModel::SetLines(const QStringList &lines)
{
    beginResetModel();
    m_lines = lines;
    const auto longest = std::ranges::max_element(m_lines, {}, &QString::size);
    m_longest = longest == m_lines.cend() ? QString() : ShownText(*longest);
    endResetModel();
}

int LinesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

QVariant LinesModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return ShownText(m_lines[index.row()]);
}
