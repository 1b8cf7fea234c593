#include "searchcriteria.h"

#include "fields.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Capitals character by character: the searched side is mapped so too, and "ß" must not become two letters.
QString Capitals(QString text)
{
    std::ranges::transform(text, text.begin(), [](QChar character) { return character.toUpper(); });
    return text;
}

QString Attribute(const char *name)
{
    return u'@' + QLatin1StringView(name);
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
    contains(Attribute(Field::kType), criteria.type);
    equals(Attribute(Field::kYear), criteria.year);
    equals(Attribute(Field::kMonth), criteria.month);
    equals(Attribute(Field::kDay), criteria.day);
    contains(Attribute(Field::kVenue), criteria.venue);
    // What is typed as concert is looked for in the type as well: searches have always worked so.
    contains(Attribute(Field::kType), criteria.concert);
    contains(Attribute(Field::kLength), criteria.length);
    contains(Attribute(Field::kSource), criteria.source);
    contains(Attribute(Field::kGrade), criteria.grade);
    contains(Attribute(Field::kFormat), criteria.format);
    contains(Attribute(Field::kSeeder), criteria.seeder);
    contains(Attribute(Field::kStored), criteria.storedIn);
    contains(QLatin1StringView(Element::kSetList), criteria.trackList);
    contains(QLatin1StringView(Element::kNotes), criteria.notes);
    contains(QLatin1StringView(Element::kComment), criteria.comments);
    query.chop(criteria.joiner.length() + 1);
    return query + u']';
}
