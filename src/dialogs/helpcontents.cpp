#include "helpcontents.h"

#include <QRegularExpression>
#include <QTextDocumentFragment>

using namespace Qt::StringLiterals;

namespace {

QString Attribute(const QString &tag, const QString &name)
{
    const QRegularExpression pattern(
        u"\\b%1\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')"_s.arg(name), QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(tag);
    const QString value = match.captured(match.lastCapturedIndex());
    return match.hasMatch() ? QTextDocumentFragment::fromHtml(value).toPlainText() : QString();
}

void TakeParameter(const QString &tag, HelpTopic &topic)
{
    const QString name = Attribute(tag, u"name"_s).toLower();
    if (name == "name"_L1)
        topic.title = Attribute(tag, u"value"_s);
    else if (name == "local"_L1)
        topic.page = Attribute(tag, u"value"_s);
}

} // namespace

std::vector<HelpTopic> ReadHelpContents(const QString &html)
{
    static const QRegularExpression tags(
        uR"(<(/?)(ul|object|param)\b((?:"[^"]*"|'[^']*'|[^>"'])*)>)"_s, QRegularExpression::CaseInsensitiveOption);
    std::vector<HelpTopic> topics;
    int level = -1;
    HelpTopic topic{};
    for (const QRegularExpressionMatch &match : tags.globalMatch(html)) {
        const bool ends = match.capturedLength(1) > 0;
        const QString name = match.captured(2).toLower();
        if (name == "ul"_L1)
            level += ends ? -1 : 1;
        else if (name == "param"_L1)
            TakeParameter(match.captured(3), topic);
        else if (!ends)
            topic = {{}, {}, qMax(0, level)};
        else if (!topic.title.isEmpty())
            topics.push_back(topic);
    }
    return topics;
}
