#include "formatregistry.h"

#include "failures.h"
#include "flatfile.h"
#include "paths.h"
#include "prompts.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kSection = "Formats"_L1;
constexpr auto kLossless = "Lossless"_L1;
constexpr auto kLossy = "Lossy"_L1;

FormatKind KindOfWord(const QString &classWord)
{
    if (classWord == kLossless)
        return FormatKind::Lossless;
    return classWord == kLossy ? FormatKind::Lossy : FormatKind::Unknown;
}

} // namespace

FormatRegistry::FormatRegistry(UserPrompts &prompts) : m_prompts(prompts), m_file(prompts) {}

void FormatRegistry::LoadFormats()
{
    beginResetModel();
    m_entries.clear();
    m_positions.clear();
    m_pictures.RemoveFormatPictures();
    endResetModel();

    // Reported before anybody is asked about a format that the file's unread part classes.
    Guarded("frmMain", "LoadFormats", [this] { m_file.LoadINI(InFolder(ProgramFolder(), u"formats.ini"_s)); });
    const QStringList failures = LoadBitmaps();
    LoadNamedFormats();
    if (!failures.isEmpty())
        throw ProgramError(Failure::BadFile, failures.join(u"\r\n"_s));
}

QStringList FormatRegistry::LoadBitmaps()
{
    const QString folder = InFolder(ProgramFolder(), u"Formats"_s);
    QStringList failures;
    for (const QString &file : FilesInFolder(folder, u"*.bmp"_s)) {
        const QString name = FileTitle(file);
        const QString path = InFolder(folder, file);
        const bool hasPicture = m_pictures.AddFormatPicture(name, path);
        if (!hasPicture)
            failures.append(u"The picture %1 cannot be loaded."_s.arg(path));
        AddFormat(name, m_file.ReadString(kSection, name), hasPicture);
    }
    return failures;
}

void FormatRegistry::LoadNamedFormats()
{
    // An answer given on the way replaces a key's value in place, so the keys stay where they are.
    for (int i = 0; i < m_file.NumberOfKeys(kSection); ++i) {
        const QString name = m_file.KeyName(kSection, i);
        // No listing can name a format with a NUL, and to the registry it would be the one that ends there.
        if (!name.contains(QChar::Null) && FindFormat(name) < 0)
            AddFormat(name, m_file.ReadString(kSection, name), false);
    }
}

int FormatRegistry::FindFormat(const QString &name) const
{
    return m_positions.value({name.toUtf8().constData()}, -1);
}

int FormatRegistry::FindOrAddFormat(TextKey name)
{
    if (*name.text == '\0')
        return -1;
    const int position = m_positions.value(name, -1);
    return position >= 0 ? position : AddFormat(FromUtf8(name.text), {}, false);
}

int FormatRegistry::AddFormat(const QString &name, const QString &classWord, bool hasPicture)
{
    const int position = static_cast<int>(m_entries.size());
    if (!hasPicture)
        m_pictures.AddCommonPicture(name);
    // In the list before the question is asked: a question runs an event loop, and nothing may ask for this name again.
    beginInsertRows({}, position + 1, position + 1);
    m_entries.push_back({name, name.toUtf8(), FormatPictureKey(name), KindOfWord(classWord)});
    m_positions.insert({m_entries.back().utf8Name.constData()}, position);
    endInsertRows();
    if (classWord.isEmpty())
        m_entries[static_cast<size_t>(position)].kind = AskClass(name);
    return position;
}

FormatKind FormatRegistry::AskClass(const QString &name)
{
    const QString question = u"Detected a new format type: %1\r\nIs this a lossless format?"_s.arg(name);
    const bool lossless =
        m_prompts.Message(question, u"Unknown format"_s, UserPrompts::Icon::Question, UserPrompts::Buttons::YesNo) ==
        UserPrompts::Answer::Yes;
    m_file.WriteValue(kSection, name, lossless ? kLossless : kLossy);
    return lossless ? FormatKind::Lossless : FormatKind::Lossy;
}

FormatKind FormatRegistry::FormatClass(const QString &name)
{
    return ClassAt(FindOrAddFormat({name.toUtf8().constData()}));
}

FormatKind FormatRegistry::ClassAt(int position) const
{
    return position < 0 ? FormatKind::Unknown : m_entries[static_cast<size_t>(position)].kind;
}

QString FormatRegistry::GetShowImageKey(const QString &format, bool wrongDate)
{
    return ShowImageKeyAt(wrongDate ? -1 : FindOrAddFormat({format.toUtf8().constData()}), wrongDate);
}

QString FormatRegistry::ShowImageKeyAt(int position, bool wrongDate) const
{
    // One text for all listings.
    static const QString kWrongDate = kWrongDatePicture;
    static const QString kUnchecked = kUncheckedPicture;
    if (wrongDate)
        return kWrongDate;
    return position < 0 ? kUnchecked : m_entries[static_cast<size_t>(position)].pictureKey;
}

QString FormatRegistry::SpokenPicture(const QString &pictureKey) const
{
    if (pictureKey == kWrongDatePicture)
        return u"wrong date"_s;
    if (pictureKey == kUncheckedPicture)
        return u"not held"_s;
    QString name = FormatNameFromKey(pictureKey);
    switch (ClassAt(FindFormat(name))) {
    case FormatKind::Lossless:
        return name + u", lossless"_s;
    case FormatKind::Lossy:
        return name + u", lossy"_s;
    case FormatKind::Unknown:
        break;
    }
    return name;
}

int FormatRegistry::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size()) + 1;
}

QVariant FormatRegistry::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (index.row() == 0)
        return role == PopupCaptionRole || role == Qt::AccessibleTextRole ? QVariant(u"<Don't Have>"_s) : QVariant();

    const QString &name = m_entries[static_cast<size_t>(index.row() - 1)].name;
    switch (role) {
    case Qt::DisplayRole:
    case KeyRole:
        return name;
    case PopupCaptionRole:
        return QString(u'&' + name);
    case Qt::DecorationRole:
        return m_pictures.Picture(FormatPictureKey(name));
    default:
        return {};
    }
}
