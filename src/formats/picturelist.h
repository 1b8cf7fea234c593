#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

/// The pictures of tree, picker and pop-up menu by key: nine fixed ones that come with the program, and one a format
/// under "Format" followed by the format's name.
class PictureList
{
public:
    /// Loads the nine fixed pictures.
    PictureList();

    /// Forgets the format pictures.
    void RemoveFormatPictures();

    /// Adds a format's picture from a bitmap file. False when the file is no picture.
    bool AddFormatPicture(const QString &formatName, const QString &path);

    /// Gives a format that has no picture of its own the fixed picture "Checked".
    void AddCommonPicture(const QString &formatName);

    /// The picture of a key; a null icon when there is none.
    QIcon Picture(const QString &key) const { return m_pictures.value(key); }

private:
    QHash<QString, QIcon> m_pictures;
};

/// The picture key of a listing whose date is wrong.
inline constexpr QLatin1StringView kWrongDatePicture{"WrongDate"};

/// The picture key of a listing of which nothing is held.
inline constexpr QLatin1StringView kUncheckedPicture{"Unchecked"};

/// The picture key of a format: "Format" followed by its name.
QString FormatPictureKey(const QString &formatName);

/// The format name in a picture key: the key without its first six characters.
QString FormatNameFromKey(const QString &pictureKey);
