#include "picturelist.h"

#include <QFileInfo>
#include <QImage>
#include <QPixmap>

#include <array>

using namespace Qt::StringLiterals;

// The pictures lie in a static library, whose resources are linked only when they are named. Outside of any namespace.
static void RegisterPictures()
{
    Q_INIT_RESOURCE(pictures);
}

namespace {

constexpr auto kFormatPrefix = "Format"_L1;

/// Pictures stand in the tree at this many pixels; the bitmaps are larger so that they stay sharp on dense screens.
constexpr int kPictureSize = 16;

/// The selected row shows its picture as it is: tinted, an empty box would vanish.
constexpr std::array kModes{QIcon::Normal, QIcon::Selected};

QIcon IconFromImage(const QImage &image)
{
    QIcon icon;
    for (const int scale : {1, 2, 3}) {
        const int size = kPictureSize * scale;
        const QImage scaled = image.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        for (const QIcon::Mode mode : kModes)
            icon.addPixmap(QPixmap::fromImage(scaled), mode);
    }
    return icon;
}

QIcon FixedIcon(const QString &name)
{
    QIcon icon;
    for (const QIcon::Mode mode : kModes)
        icon.addFile(u":/pictures/%1.png"_s.arg(name), {}, mode);
    return icon;
}

} // namespace

PictureList::PictureList()
{
    RegisterPictures();
    for (const QString &name :
         {u"Open"_s, u"Closed"_s, u"Unchecked"_s, u"Checked"_s, u"WrongDate"_s, u"CD"_s, u"Interview"_s, u"Music"_s,
          u"Video"_s})
        m_pictures.insert(name, FixedIcon(name));
}

void PictureList::RemoveFormatPictures()
{
    m_pictures.removeIf(
        [](const std::pair<const QString &, QIcon &> &entry) { return entry.first.startsWith(kFormatPrefix); });
}

bool PictureList::AddFormatPicture(const QString &formatName, const QString &path)
{
    // A pipe would be waited for.
    const QImage image = QFileInfo(path).isFile() ? QImage(path) : QImage();
    if (!image.isNull())
        m_pictures.insert(FormatPictureKey(formatName), IconFromImage(image));
    return !image.isNull();
}

void PictureList::AddCommonPicture(const QString &formatName)
{
    m_pictures.insert(FormatPictureKey(formatName), Picture(u"Checked"_s));
}

QString FormatPictureKey(const QString &formatName)
{
    return kFormatPrefix + formatName;
}

QString FormatNameFromKey(const QString &pictureKey)
{
    return pictureKey.sliced(qMin(kFormatPrefix.size(), pictureKey.size()));
}
