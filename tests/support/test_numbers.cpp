#include "kit.h"
#include "numbers.h"

static void Reads(const QString &text, double number, bool isNumeric)
{
    QVERIFY2(LeadingNumber(QStringView(text)) == number, qPrintable(text));
    QVERIFY2(LeadingNumber(text.toStdString()) == number, qPrintable(text));
    QVERIFY2(IsNumeric(text) == isNumeric, qPrintable(text));
}

class TestNumbers : public QObject
{
    Q_OBJECT

private slots:
    void leadingNumber()
    {
        const std::vector<std::pair<const char *, double>> numbers = {{"1994", 1994}, {"07", 7},  {"  12 ", 12},
                                                                      {"-3", -3},     {"+3", 3},  {"1994.5", 1994.5},
                                                                      {".5", 0.5},    {"12.", 12}};
        const std::vector<std::pair<const char *, double>> numbersFirst = {{"1999x", 1999}, {"1 2", 1}, {"1.2.3", 1.2},
                                                                           {"1,5", 1},      {"1e3", 1}, {"0x10", 0}};
        for (const auto &[text, number] : numbers)
            Reads(QString::fromLatin1(text), number, true);
        for (const auto &[text, number] : numbersFirst)
            Reads(QString::fromLatin1(text), number, false);
        for (const QString &text : u"|  |x1999|--3|- 3|-|.|inf|\u0661\u0662|\u00A012"_s.split(u'|'))
            Reads(text, 0, false);
        Reads(QString(2'000'000, u'0') + u'7', 7, true);
        Reads(u"-123456789.012345"_s, -123456789.012345, true);
        Reads(u"+0.12345678901234567"_s, 0.12345678901234567, true);
        Reads(u"-123456789012345678901234567890.5x"_s, -123456789012345678901234567890.5, false);
        Reads(QString(2'000'000, u'9'), qInf(), true);
    }

    void wholeNumber()
    {
        const std::vector<std::pair<double, int>> halvesToEven = {
            {2.5, 2}, {3.5, 4}, {-0.5, 0}, {-1.5, -2}, {2.5000001, 3}, {2147483647.4, 2147483647}};
        for (const auto &[number, whole] : halvesToEven)
            QCOMPARE(WholeNumber(number), whole);
        QCOMPARE(WholeNumber(-2147483648.5), -2147483647 - 1);
        for (const double number : {2147483648.0, 2147483647.5, -2147483649.0, qInf(), qQNaN()})
            QVERIFY_THROWS_EXCEPTION(ProgramError, WholeNumber(number));
    }

    void text()
    {
        QStringList plain;
        QStringList padded;
        for (const double number :
             {0.0, -0.0, 1.0, -3.0, 1994.0, 12345.0, 1994.5, 0.1, 999999999999999.0, 1e21, 0.00001}) {
            plain += NumberText(number);
            padded += PadNumber(number, 4);
        }
        QCOMPARE(plain.join(u' '), u"0 0 1 -3 1994 12345 1994.5 0.1 999999999999999 1000000000000000000000 0.00001"_s);
        QCOMPARE(
            padded.join(u' '),
            u"0000 0000 0001 00-3 1994 12345 1994.5 00.1 999999999999999 1000000000000000000000 0.00001"_s);
    }
};

QTEST_GUILESS_MAIN(TestNumbers)
#include "test_numbers.moc"
