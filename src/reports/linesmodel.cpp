#include "linesmodel.h"

#include "browsetreemodel.h"

#include <algorithm>

namespace {

QString Shown(const QString &line)
{
    constexpr qsizetype kMost = BrowseTreeModel::kShownLabelLength;
    return line.size() <= kMost ? line : QString(line.first(kMost) + u'…');
}

} // namespace

void LinesModel::SetLines(const QStringList &lines)
{
    beginResetModel();
    m_lines = lines;
    const auto longest = std::ranges::max_element(m_lines, {}, &QString::size);
    m_longest = longest == m_lines.cend() ? QString() : Shown(*longest);
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
    return Shown(m_lines[index.row()]);
}
