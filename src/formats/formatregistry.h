#pragma once

#include "clsINI.h"
#include "picturelist.h"
#include "textkey.h"

#include <QAbstractListModel>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

class UserPrompts;

/// What a format keeps of the sound.
enum class FormatKind {
    Unknown = 0, ///< also: no format
    Lossless = 1,
    Lossy = 2,
};

/// Every recording format that the program has met, with its class and picture. Filled at start-up from formats.ini and
/// the bitmaps of the Formats folder; grows when a listing names a format that is new, which asks the user once.
///
/// It is also the list that format picker, search and pop-up menu show: row 0 stands for no format, row i for the i-th
/// registered one.
class FormatRegistry : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        KeyRole = Qt::UserRole, ///< the format's name, empty in row 0
        PopupCaptionRole,       ///< the caption of the pop-up menu: "<Don't Have>", or "&" and the name
    };

    explicit FormatRegistry(UserPrompts &prompts);

    /// Builds the registry from the program's folder. A formats.ini that cannot be used is reported. Registers all that
    /// can be, then throws ProgramError when bitmaps could not be used.
    void LoadFormats();

    /// Position of the format with exactly that name, -1 when there is none.
    int FindFormat(const QString &name) const;
    /// The same for a listing's format as it stands in the document; an unknown one is registered first, which asks the
    /// user. No name gives -1.
    int FindOrAddFormat(TextKey name);

    /// Registers a format under a class word of formats.ini ("Lossless", "Lossy"; an empty one asks the user, unless
    /// the class may stand in a part of formats.ini that was not read) and returns its position.
    int AddFormat(const QString &name, const QString &classWord, bool hasPicture);

    /// The class of a format; an unknown name is registered first, which asks the user. An empty name has none.
    FormatKind FormatClass(const QString &name);
    /// The class of the format at a position of FindOrAddFormat.
    FormatKind ClassAt(int position) const;

    /// The picture key of a listing: kWrongDatePicture, kUncheckedPicture without a format, else that of the format,
    /// which is registered when it is new.
    QString GetShowImageKey(const QString &format, bool wrongDate);
    /// The same with the position of FindOrAddFormat.
    QString ShowImageKeyAt(int position, bool wrongDate) const;

    /// The picture of a listing in words: its format and class, or why it has none.
    QString SpokenPicture(const QString &pictureKey) const;

    const PictureList &Pictures() const { return m_pictures; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    struct Entry
    {
        QString name;
        QByteArray utf8Name;
        QString pictureKey;
        FormatKind kind = FormatKind::Unknown;
    };

    FormatKind AskClass(const QString &name);
    /// Returns a line for each bitmap that is none.
    QStringList LoadBitmaps();
    void LoadNamedFormats();

    UserPrompts &m_prompts;
    clsINI m_file;
    PictureList m_pictures;
    std::vector<Entry> m_entries;
    QHash<TextKey, int> m_positions; ///< by the UTF-8 names of the entries
};
