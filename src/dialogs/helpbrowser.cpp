#include "helpbrowser.h"

#include "chmfile.h"
#include "prompts.h"
#include "readable.h"

#include <QFocusEvent>
#include <QImage>
#include <QTextBlock>
#include <QUrl>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kScheme = "chm"_L1;
constexpr int kMargin = 16; ///< pixels

/// A page without the styles that it brings for other viewers.
QByteArray WithoutStyle(QByteArray page)
{
    constexpr QByteArrayView kEnd = "</style>";
    const qsizetype start = page.indexOf("<style");
    const qsizetype end = page.indexOf(kEnd, start);
    return start < 0 || end < 0 ? page : page.remove(start, end + kEnd.size() - start);
}

} // namespace

HelpBrowser::HelpBrowser(const ChmFile &file, UserPrompts &prompts, QWidget *parent)
    : QTextBrowser(parent),
      m_file(file),
      m_prompts(prompts)
{
    setAccessibleName(u"Help page"_s);
    document()->setDocumentMargin(kMargin);
    SetStyle();
    // Also on the way back and forward.
    connect(this, &QTextBrowser::sourceChanged, this, [this] {
        FitPictures();
        m_walksLinks = false;
    });
}

void HelpBrowser::SetStyle()
{
    document()->setDefaultStyleSheet(
        u"h1 { font-size: x-large; } h2 { font-size: large; margin-top: 20px; } td { padding: 3px 12px 3px 0; } "
        "a { color: %1; }"_s.arg(ReadableColour(palette(), QPalette::Link).name()));
}

QUrl HelpBrowser::PageAddress(const QString &page)
{
    return QUrl(kScheme + u":/"_s).resolved(QUrl(page));
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    // Nothing is read from outside the help file.
    auto contents = name.scheme() == kScheme ? m_file.Read(name.path()) : std::nullopt;
    if (contents && type == QTextDocument::ImageResource)
        return QImage::fromData(*contents);
    if (contents)
        return type == QTextDocument::HtmlResource ? WithoutStyle(*contents) : *contents;
    if (type == QTextDocument::HtmlResource)
        return u"<p>This page is not in the help file.</p>"_s;
    return {};
}

void HelpBrowser::doSetSource(const QUrl &url, QTextDocument::ResourceType type)
{
    const QUrl address = source().resolved(url);
    if (address.scheme() != kScheme) {
        m_prompts.OpenWithDefaultProgram(address.toString());
        return;
    }
    QTextBrowser::doSetSource(address, type);
}

/// By itself Tab would go through all links first.
bool HelpBrowser::focusNextPrevChild(bool next)
{
    if (m_walksLinks)
        return QTextBrowser::focusNextPrevChild(next);
    return QWidget::focusNextPrevChild(next); // NOLINT(bugprone-parent-virtual-call)
}

void HelpBrowser::focusInEvent(QFocusEvent *event)
{
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        m_walksLinks = true;
    QTextBrowser::focusInEvent(event);
}

void HelpBrowser::changeEvent(QEvent *event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || source().isEmpty())
        return;
    SetStyle();
    reload();
}

void HelpBrowser::resizeEvent(QResizeEvent *event)
{
    QTextBrowser::resizeEvent(event);
    FitPictures();
}

void HelpBrowser::FitPictures()
{
    const int room = viewport()->width() - 2 * kMargin;
    std::vector<QTextFragment> pictures;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            if (at.fragment().charFormat().isImageFormat())
                pictures.push_back(at.fragment());
        }
    }
    for (const QTextFragment &picture : pictures)
        FitPicture(picture, room);
}

/// As large as it is, or as wide as there is room.
void HelpBrowser::FitPicture(const QTextFragment &picture, int room)
{
    QTextImageFormat format = picture.charFormat().toImageFormat();
    const auto image = document()->resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
    const int width = std::min(image.width(), room);
    if (image.isNull() || width == qRound(format.width()))
        return;
    format.setWidth(width);
    format.setHeight(static_cast<double>(image.height()) * width / image.width());
    QTextCursor cursor(document());
    cursor.setPosition(picture.position());
    cursor.setPosition(picture.position() + picture.length(), QTextCursor::KeepAnchor);
    cursor.setCharFormat(format);
}
