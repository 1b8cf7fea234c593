#include "searchcriteria.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Capitals character by character: the searched side is mapped so too, and "ß" must not become two letters.
QString Capitals(QString text)
{
    std::ranges::transform(text, text.begin(), [](QChar character) { return character.toUpper(); });
    return text;
}

} // namespace

QString ContainsCondition(const QString &field, const QString &value, const QString &joiner)
{
    if (value.isEmpty())
        return {};
    return u" contains(translate("_s + field + u",'abcdefghijklmnopqrstuvwxyz','ABCDEFGHIJKLMNOPQRSTUVWXYZ'),'"_s +
           Capitals(value) + u"') "_s + joiner;
}

QString EqualsCondition(const QString &field, qint32 value, const QString &joiner)
{
    if (value <= 0)
        return {};
    return u" ("_s + field + u"='"_s + QString::number(value) + u"') "_s + joiner;
}

QString BuildSearchQuery(const SearchCriteria &criteria)
{
    QString query = u"/Catalog/Item["_s;
    const auto contains = [&](const QString &field, const QString &value) {
        query += ContainsCondition(field, value, criteria.joiner);
    };
    const auto equals = [&](const QString &field, qint32 value) {
        query += EqualsCondition(field, value, criteria.joiner);
    };
    contains(u"@Type"_s, criteria.type);
    equals(u"@Year"_s, criteria.year);
    equals(u"@Month"_s, criteria.month);
    equals(u"@Day"_s, criteria.day);
    contains(u"@Venue"_s, criteria.venue);
    // What is typed as concert is looked for in the type as well: searches have always worked so.
    contains(u"@Type"_s, criteria.concert);
    contains(u"@Length"_s, criteria.length);
    contains(u"@Source"_s, criteria.source);
    contains(u"@Grade"_s, criteria.grade);
    contains(u"@Format"_s, criteria.format);
    contains(u"@Seeder"_s, criteria.seeder);
    contains(u"@Stored"_s, criteria.storedIn);
    contains(u"SetList"_s, criteria.trackList);
    contains(u"Notes"_s, criteria.notes);
    contains(u"Comment"_s, criteria.comments);
    query.chop(criteria.joiner.length() + 1);
    return query + u']';
}
