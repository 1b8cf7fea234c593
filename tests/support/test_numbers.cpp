#include "failures.h"
#include "numbers.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

class TestNumbers : public QObject
{
    Q_OBJECT

private slots:
    void leadingNumber_data();
    void leadingNumber();
    void wholeNumber_data();
    void wholeNumber();
    void wholeNumberOverflows();
    void text_data();
    void text();
};

void TestNumbers::leadingNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::addColumn<bool>("numeric");

    QTest::newRow("empty") << u""_s << 0.0 << false;
    QTest::newRow("blank") << u"  "_s << 0.0 << false;
    QTest::newRow("year") << u"1994"_s << 1994.0 << true;
    QTest::newRow("leading zero") << u"07"_s << 7.0 << true;
    QTest::newRow("many leading zeros") << u"00000000000000000000007"_s << 7.0 << true;
    QTest::newRow("digits first") << u"1999x"_s << 1999.0 << false;
    QTest::newRow("word first") << u"x1999"_s << 0.0 << false;
    QTest::newRow("blanks around") << u"  12 "_s << 12.0 << true;
    QTest::newRow("blank inside") << u"1 2"_s << 1.0 << false;
    QTest::newRow("minus") << u"-3"_s << -3.0 << true;
    QTest::newRow("plus") << u"+3"_s << 3.0 << true;
    QTest::newRow("two signs") << u"--3"_s << 0.0 << false;
    QTest::newRow("blank after the sign") << u"- 3"_s << 0.0 << false;
    QTest::newRow("sign alone") << u"-"_s << 0.0 << false;
    QTest::newRow("fraction") << u"1994.5"_s << 1994.5 << true;
    QTest::newRow("fraction alone") << u".5"_s << 0.5 << true;
    QTest::newRow("point at the end") << u"12."_s << 12.0 << true;
    QTest::newRow("point alone") << u"."_s << 0.0 << false;
    QTest::newRow("two points") << u"1.2.3"_s << 1.2 << false;
    QTest::newRow("comma") << u"1,5"_s << 1.0 << false;
    QTest::newRow("exponent") << u"1e3"_s << 1.0 << false;
    QTest::newRow("hexadecimal") << u"0x10"_s << 0.0 << false;
    QTest::newRow("infinity") << u"inf"_s << 0.0 << false;
    QTest::newRow("other digits") << u"\u0661\u0662"_s << 0.0 << false;
    QTest::newRow("no-break space") << u"\u00A012"_s << 0.0 << false;
    QTest::newRow("fifteen digits") << u"-123456789.012345"_s << -123456789.012345 << true;
    QTest::newRow("seventeen digits") << u"+0.12345678901234567"_s << 0.12345678901234567 << true;
    QTest::newRow("beyond 64 bits") << u"-123456789012345678901234567890.5x"_s << -123456789012345678901234567890.5
                                    << false;
    QTest::newRow("beyond a double") << QString(400, u'9') << std::numeric_limits<double>::infinity() << true;
}

void TestNumbers::leadingNumber()
{
    QFETCH(const QString, text);
    QFETCH(const double, number);
    const bool same = LeadingNumber(QStringView(text)) == number && LeadingNumber(text.toStdString()) == number;
    QVERIFY2(same, qPrintable(QString::number(LeadingNumber(QStringView(text)), 'g', 17)));
    QTEST(IsNumeric(text), "numeric");
}

void TestNumbers::wholeNumber_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("whole");

    QTest::newRow("half to even below") << 2.5 << 2;
    QTest::newRow("half to even above") << 3.5 << 4;
    QTest::newRow("negative half") << -0.5 << 0;
    QTest::newRow("negative half above") << -1.5 << -2;
    QTest::newRow("just above a half") << 2.5000001 << 3;
    QTest::newRow("highest") << 2147483647.5 - 0.1 << std::numeric_limits<int>::max();
    QTest::newRow("lowest") << -2147483648.5 << std::numeric_limits<int>::min();
}

void TestNumbers::wholeNumber()
{
    QFETCH(const double, number);
    QTEST(WholeNumber(number), "whole");
}

void TestNumbers::wholeNumberOverflows()
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double number : {2147483648.0, 2147483647.5, -2147483649.0, infinity, std::nan("")})
        QVERIFY_THROWS_EXCEPTION(ProgramError, WholeNumber(number));
}

void TestNumbers::text_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("padded");

    QTest::newRow("zero") << 0.0 << u"0"_s << u"0000"_s;
    QTest::newRow("negative zero") << -0.0 << u"0"_s << u"0000"_s;
    QTest::newRow("one") << 1.0 << u"1"_s << u"0001"_s;
    QTest::newRow("negative") << -3.0 << u"-3"_s << u"00-3"_s;
    QTest::newRow("full width") << 1994.0 << u"1994"_s << u"1994"_s;
    QTest::newRow("too wide") << 12345.0 << u"12345"_s << u"12345"_s;
    QTest::newRow("fraction") << 1994.5 << u"1994.5"_s << u"1994.5"_s;
    QTest::newRow("not exact in binary") << 0.1 << u"0.1"_s << u"00.1"_s;
    QTest::newRow("fifteen digits") << 999999999999999.0 << u"999999999999999"_s << u"999999999999999"_s;
    QTest::newRow("large") << 1e21 << u"1000000000000000000000"_s << u"1000000000000000000000"_s;
    QTest::newRow("small") << 0.00001 << u"0.00001"_s << u"0.00001"_s;
}

void TestNumbers::text()
{
    QFETCH(const double, number);
    QTEST(NumberText(number), "plain");
    QTEST(PadNumber(number, 4), "padded");
}

QTEST_GUILESS_MAIN(TestNumbers)
#include "test_numbers.moc"
