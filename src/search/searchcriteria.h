#pragma once

#include <QString>

/// What the user looks for. An empty text and a number below 1 are no condition.
struct SearchCriteria
{
    QString type = {};
    qint32 year = 0;
    qint32 month = 0;
    qint32 day = 0;
    QString venue = {};
    QString concert = {};
    QString length = {};
    QString source = {};
    QString grade = {};
    QString format = {};
    QString seeder = {};
    QString storedIn = {};
    QString trackList = {};
    QString notes = {};
    QString comments = {};
    QString joiner = {}; ///< "and" or "or", once the criteria are stored
};

/// The condition that a field contains a text, in any case of the 26 ASCII letters, followed by the joiner. Empty for
/// an empty text.
QString ContainsCondition(const QString &field, const QString &value, const QString &joiner);

/// The condition that a field is a number, followed by the joiner. Empty for a number below 1.
QString EqualsCondition(const QString &field, qint32 value, const QString &joiner);

/// The XPath expression that selects the listings. Values go into it as they are, so one with an apostrophe, or
/// criteria without any condition, make an expression that does not parse.
QString BuildSearchQuery(const SearchCriteria &criteria);
