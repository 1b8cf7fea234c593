#include "recentcatalogs.h"

#include "clsINI.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kSection = "MRU"_L1;

} // namespace

void RecentCatalogs::Load()
{
    m_paths.clear();
    for (int i = 0; i < m_settings.NumberOfKeys(kSection) && m_paths.size() < kMaximum; ++i) {
        const QString path = m_settings.ReadString(kSection, m_settings.KeyName(kSection, i));
        if (!path.isEmpty())
            m_paths.append(path);
    }
    emit changed();
}

void RecentCatalogs::AddToMRU(const QString &path)
{
    m_paths.removeOne(path);
    m_paths.prepend(path);
    m_paths = m_paths.first(qMin(m_paths.size(), kMaximum));
    SaveMRU();
    emit changed();
}

void RecentCatalogs::Remove(const QString &path)
{
    if (!m_paths.removeOne(path))
        return;
    SaveMRU();
    Load();
}

void RecentCatalogs::SaveMRU()
{
    const OneSave save(m_settings);
    m_settings.DeleteSection(kSection);
    for (qsizetype i = 0; i < m_paths.size(); ++i)
        m_settings.WriteValue(kSection, QString::number(i), m_paths[i]);
}
