#include "helpbrowser.h"

#include "chmfile.h"
#include "prompts.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kScheme = "chm"_L1;

} // namespace

HelpBrowser::HelpBrowser(const ChmFile &file, UserPrompts &prompts, QWidget *parent)
    : QTextBrowser(parent),
      m_file(file),
      m_prompts(prompts)
{
    setAccessibleName(u"Help page"_s);
}

QUrl HelpBrowser::PageAddress(const QString &page)
{
    return QUrl(kScheme + u":/"_s).resolved(QUrl(page));
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    // Nothing is read from outside the help file.
    auto contents = name.scheme() == kScheme ? m_file.Read(name.path()) : std::nullopt;
    if (contents)
        return *contents;
    if (type == QTextDocument::HtmlResource)
        return u"<p>This page is not in the help file.</p>"_s;
    return {};
}

void HelpBrowser::doSetSource(const QUrl &url, QTextDocument::ResourceType type)
{
    const QUrl address = source().resolved(url);
    if (address.scheme() == kScheme)
        QTextBrowser::doSetSource(address, type);
    else
        m_prompts.OpenWithDefaultProgram(address.toString());
}
