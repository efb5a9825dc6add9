#include "platform/vb/Decimal.h"
#include "platform/vb/VbConvert.h"
#include "platform/vb/VbDateFormat.h"
#include "platform/vb/VbDatePart.h"
#include "platform/vb/VbError.h"
#include "platform/vb/VbFormat.h"
#include "platform/vb/VbLike.h"
#include "platform/vb/VbRandom.h"
#include "platform/vb/VbStrConv.h"
#include "support/FileBytes.h"

#include <QtTest>
#include <functional>

// The runtime functions that the settings, the dates, the input pad, the
// wallpaper and the clock rely on, as a Japanese system gives them.
class TestVbRuntime : public QObject
{
    Q_OBJECT

    // The result as text, or "error N" for a run-time error.
    static QString outcome(const std::function<QString()> &step)
    {
        try {
            return step();
        } catch (const VbError &error) {
            return u"error %1"_qs.arg(error.number());
        }
    }

    static int seventhDigits(float value) { return qRound(value * 1e7); }

    static QString decimal(const QStringList &words)
    {
        const QString &operation = words.value(0);
        if (operation == u"whole")
            return Decimal(words.value(1).toLongLong()).toString();
        const Decimal a = Decimal::fromText(words.value(1));
        if (operation == u"parse")
            return a.toString();
        if (operation == u"display")
            return a.toDisplayText();
        if (operation == u"currency")
            return a.toCurrency().toString();
        const Decimal b = Decimal::fromText(words.value(2));
        if (operation == u"compare")
            return a < b ? u"<"_qs : a == b ? u"="_qs : u">"_qs;
        if (operation == u"add")
            return (a + b).toString();
        if (operation == u"sub")
            return (a - b).toString();
        if (operation == u"mul")
            return (a * b).toString();
        if (operation == u"div")
            return (a / b).toString();
        return u"unknown operation"_qs;
    }

private slots:
    void conversions_data()
    {
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const QList<QStringList> rows{
            {"Boolean", "True", "True"}, {"Boolean", "False", "False"}, {"Boolean", "TRUE", "True"},
            {"Boolean", "-1", "True"}, {"Boolean", "0", "False"}, {"Boolean", "0.5", "True"},
            {"On/Off", "True", "On"}, {"On/Off", "False", "Off"}, {"Boolean", "maybe", "error 13"}, {"Boolean", "", "error 13"}, {"Boolean", u"はい"_qs, "error 13"},
            // Halves round to even.
            {"Long", "2.5", "2"}, {"Long", "3.5", "4"}, {"Long", " -7 ", "-7"}, {"Long", "&H10", "16"},
            {"Long", "2147483647", "2147483647"}, {"Long", "3000000000", "error 6"},
            {"Integer", "32767", "32767"}, {"Integer", "-32768", "-32768"}, {"Integer", "40000", "error 6"},
        };
        for (const QStringList &row : rows)
            QTest::addRow("%s %s", qPrintable(row[0]), qPrintable(row[1])) << row[0] << row[1] << row[2];
    }
    void conversions()
    {
        QFETCH(QString, to);
        QFETCH(QString, text);
        QTEST(outcome([&] {
                  return to == u"Boolean" ? VbConvert::fromBoolean(VbConvert::toBoolean(text))
                         : to == u"On/Off" ? VbFormat::boolean(VbConvert::toBoolean(text), "On/Off")
                         : to == u"Long"  ? QString::number(VbConvert::toLong(text))
                                          : QString::number(VbConvert::toInteger(text));
              }),
              "expected");
    }

    void strConv_data()
    {
        QTest::addColumn<QString>("conversion");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const QList<QStringList> rows{
            {"proper", "HELLO!", "Hello!"}, {"proper", "", ""},
            {"proper", "what's the date today?", "What's The Date Today?"}, {"proper", "let's go home, please.", "Let's Go Home, Please."},
            {"proper", "on\toff\nyes", "On\tOff\nYes"}, {"proper", u"abc\u3000def"_qs, u"Abc\u3000Def"_qs},
            {"proper", u"こんにちは"_qs, u"こんにちは"_qs}, {"proper", "canon iP2700 series", "Canon Ip2700 Series"},
            // Each pair both ways: narrow to wide, and back.
            {"wide", "Az09", u"Ａｚ０９"_qs}, {"wide", "!~ @{}", u"！～　＠｛｝"_qs},
            {"wide", u"ｱｲｳｦﾝｯｰ"_qs, u"アイウヲンッー"_qs}, {"wide", u"ｶﾞﾊﾟｳﾞ"_qs, u"ガパヴ"_qs},
            {"wide", u"｡｢｣､･"_qs, u"。「」、・"_qs}, {"wide", u"ﾞﾟ"_qs, u"゛゜"_qs},
            // No other width: kept. A mark that cannot join its kana is widened on its own.
            {"wide", u"にほん漢字①"_qs, u"にほん漢字①"_qs}, {"narrow", u"にほん漢字ヵヶヮ"_qs, u"にほん漢字ヵヶヮ"_qs},
            {"wide", u"ｱﾞ"_qs, u"ア゛"_qs},
            {"katakana", u"にほんご、ぁっゔゝ"_qs, u"ニホンゴ、ァッヴヽ"_qs},
            {"hiragana", u"ニホンゴー、ヴヵヽ"_qs, u"にほんごー、ゔゕゝ"_qs},
            // Half-width katakana and Latin letters are no kana of the other kind.
            {"hiragana", u"ｶﾅ abc"_qs, u"ｶﾅ abc"_qs}, {"katakana", "ni", "ni"},
            // The pad's romaji: katakana then narrow keeps letters and narrows signs.
            {"romaji", "nihongo", "nihongo"}, {"romaji", u"､｡･｢｣"_qs, u"､｡･｢｣"_qs},
        };
        for (const QStringList &row : rows) {
            QTest::addRow("%s %s", qPrintable(row[0]), qPrintable(row[1])) << row[0] << row[1] << row[2];
            if (row[0] == u"wide" && row[1] != row[2] && row[1] != u"ｱﾞ")
                QTest::addRow("narrow %s", qPrintable(row[2])) << u"narrow"_qs << row[2] << row[1];
        }
    }
    void strConv()
    {
        QFETCH(QString, conversion);
        QFETCH(QString, text);
        const QString result = conversion == u"proper"     ? VbStrConv::properCase(text)
                               : conversion == u"wide"     ? VbStrConv::wide(text)
                               : conversion == u"narrow"   ? VbStrConv::narrow(text)
                               : conversion == u"katakana" ? VbStrConv::katakana(text)
                               : conversion == u"hiragana" ? VbStrConv::hiragana(text)
                                                           : VbStrConv::narrow(VbStrConv::katakana(text));
        QTEST(result, "expected");
    }

    void likePatterns_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("matches");
        QTest::newRow("star") << "/opt/lantern/SKIN/A.TTE" << "/opt/lantern/*" << true;
        QTest::newRow("other folder") << "/usr/share/fonts/A.TTE" << "/opt/lantern/*" << false;
        QTest::newRow("case-sensitive") << "/OPT/lantern/x" << "/opt/lantern/*" << false;
        QTest::newRow("question mark needs a character") << "{A778E06-A936}" << "{[Aa]778[Ee]06?-[Aa]936}" << false;
        QTest::newRow("digit") << "ab5" << "ab#" << true;
        QTest::newRow("not a digit") << "abc" << "ab#" << false;
        QTest::newRow("negated list") << "b" << "[!a]" << true;
        QTest::newRow("range") << "m" << "[a-z]" << true;
        QTest::newRow("folder with brackets is a pattern") << "/x/[1]/f" << "/x/[1]/*" << false;
        QTest::newRow("unclosed list") << "a" << "[a" << false;
        QTest::newRow("empty") << "" << "*" << true;
    }
    void likePatterns()
    {
        QFETCH(QString, text);
        QFETCH(QString, pattern);
        QTEST(VbLike::match(text, pattern), "matches");
    }

    void dateFormats_data()
    {
        QTest::addColumn<QDateTime>("at");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("expected");
        // Late in the evening: the day, not the universal time, decides. The
        // first year of an era is written 1, not 元年.
        const QString era = u"ggge年m月d日 aaaa"_qs;
        const auto evening = [](int y, int m, int d) { return QDateTime(QDate(y, m, d), QTime(23, 59, 59)); };
        QTest::newRow("Heisei") << evening(2009, 4, 1) << era << u"平成21年4月1日 水曜日"_qs;
        QTest::newRow("last day of Heisei") << evening(2019, 4, 30) << era << u"平成31年4月30日 火曜日"_qs;
        QTest::newRow("first day of Reiwa") << evening(2019, 5, 1) << era << u"令和1年5月1日 水曜日"_qs;
        QTest::newRow("Reiwa 8") << evening(2026, 11, 23) << era << u"令和8年11月23日 月曜日"_qs;
        QTest::newRow("last day of Showa") << evening(1989, 1, 7) << era << u"昭和64年1月7日 土曜日"_qs;
        QTest::newRow("first day of Heisei") << evening(1989, 1, 8) << era << u"平成1年1月8日 日曜日"_qs;
        QTest::newRow("Sunday, two-digit day") << evening(2023, 12, 31) << era << u"令和5年12月31日 日曜日"_qs;

        const QDateTime saved(QDate(2009, 4, 1), QTime(9, 5, 7));
        QTest::newRow("file name") << saved << "yyyymmddhhnnss" << "20090401090507";
        QTest::newRow("m after an hour is the minute, quoted text") << saved << "h:m \"at\" d/m" << "9:5 at 1/4";
        QTest::newRow("short era, era year, short weekday") << saved << "gg ee aaa" << u"平 21 水"_qs;
        QTest::newRow("era letter") << saved << "g" << "H";
        QTest::newRow("Long Date") << saved << "Long Date" << u"2009年4月1日"_qs;
        const QDateTime morning(QDate(2026, 1, 5), QTime(9, 5, 7));
        QTest::newRow("Long Date, one-digit month") << morning << "Long Date" << u"2026年1月5日"_qs;
        QTest::newRow("Short Date") << morning << "Short Date" << "2026/01/05";
        QTest::newRow("Long Time") << morning << "Long Time" << "9:05:07";
        QTest::newRow("Short Time") << morning << "Short Time" << "09:05";
        const QDateTime late(QDate(2026, 11, 23), QTime(23, 16));
        QTest::newRow("long date, any case") << late << "long date" << u"2026年11月23日"_qs;
        QTest::newRow("Short Time, evening") << late << "Short Time" << "23:16";
    }
    void dateFormats()
    {
        QFETCH(QDateTime, at);
        QFETCH(QString, pattern);
        QFETCH(QString, expected);
        QCOMPARE(VbDateFormat::format(at, pattern), expected);
        // Format() with a named format gives the same.
        if (QStringList{"Long Date", "Short Date", "Long Time", "Short Time"}.contains(pattern, Qt::CaseInsensitive))
            QCOMPARE(VbFormat::dateTime(at, pattern), expected);
    }

    void datePart_data()
    {
        QTest::addColumn<QString>("interval");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("expected");
        const QList<std::tuple<const char *, QDate, const char *>> rows{
            // The calendar quarter.
            {"q", {2026, 1, 1}, "1"}, {"q", {2026, 3, 31}, "1"}, {"q", {2026, 4, 1}, "2"},
            {"q", {2026, 9, 30}, "3"}, {"Q", {2026, 12, 31}, "4"},
            // The weekday counts from Sunday.
            {"w", {2026, 11, 22}, "1"}, {"w", {2026, 11, 23}, "2"}, {"w", {2026, 11, 28}, "7"},
            // Week 1 holds 1 January, and weeks start on Sunday: 2026 starts on a Thursday...
            {"ww", {2026, 1, 1}, "1"}, {"ww", {2026, 1, 3}, "1"}, {"ww", {2026, 1, 4}, "2"}, {"ww", {2026, 12, 31}, "53"},
            // ... 2000, a leap year, on a Saturday and ends in week 54; 2023 on a Sunday.
            {"ww", {2000, 1, 1}, "1"}, {"ww", {2000, 1, 2}, "2"}, {"ww", {2000, 12, 31}, "54"},
            {"ww", {2023, 1, 7}, "1"}, {"ww", {2023, 1, 8}, "2"},
            {"yyyy", {2024, 3, 5}, "2024"}, {"m", {2024, 3, 5}, "3"}, {"d", {2024, 3, 5}, "5"}, {"y", {2024, 3, 5}, "65"},
            {"fortnight", {2026, 1, 1}, "error 5"},
        };
        for (const auto &[interval, date, expected] : rows)
            QTest::addRow("%s %s", interval, qPrintable(date.toString(Qt::ISODate)))
                << QString(interval) << date << QString(expected);
    }
    void datePart()
    {
        QFETCH(QString, interval);
        QFETCH(QDate, date);
        QTEST(outcome([&] { return QString::number(VbDatePart::datePart(interval, date)); }), "expected");
    }

    void rndFollowsTheRuntimesSequence()
    {
        VbRandom::restart();
        QCOMPARE(seventhDigits(VbRandom::rnd()), 7055475);
        // Rnd(0) repeats the last number, a positive argument moves on.
        QCOMPARE(seventhDigits(VbRandom::rnd(0.0f)), 7055475);
        QVERIFY(seventhDigits(VbRandom::rnd(1.0f)) != 7055475);
        // A negative argument restarts from its bits, whatever came before.
        QCOMPARE(seventhDigits(VbRandom::rnd(-1.0f)), 2240070);
        QCOMPARE(seventhDigits(VbRandom::rnd(-2.0f)), 7133257);
        VbRandom::rnd();
        QCOMPARE(seventhDigits(VbRandom::rnd(-1.0f)), 2240070);
        for (int i = 0; i < 100000; ++i) {
            const float r = VbRandom::rnd();
            QVERIFY(r >= 0.0f && r < 1.0f);
        }
    }

    void randomizeReplacesTheMiddleBitsOnly()
    {
        VbRandom::restart();
        VbRandom::rnd();
        const std::uint32_t before = VbRandom::state();
        VbRandom::randomize(12345.678);
        QCOMPARE(VbRandom::state() & 0xFF, before & 0xFF);
        QVERIFY(VbRandom::state() < (1u << 24));
        // The same seed from the same state gives the same run, another seed another.
        QList<float> first;
        for (double seed : {40000.5, 40000.5, 40001.25}) {
            VbRandom::restart();
            VbRandom::randomize(seed);
            first << VbRandom::rnd();
        }
        QCOMPARE(first[1], first[0]);
        QVERIFY(first[2] != first[0]);
        const float t = VbRandom::timer();
        QVERIFY(t >= 0.0f && t < 86400.0f);
    }

    // Each line of tests/data/decimal/cases.txt is one operation and its exact
    // answer: "add|sub|mul|div A B", "compare A B", "parse TEXT", "display A"
    // (the "#,0.##" format), "currency A" or "whole N", then " => " and the
    // result with every digit of its scale, or "error N" for a run-time error.
    void decimalOperations_data()
    {
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("answer");
        const QString table = QString::fromUtf8(fileBytes(QStringLiteral(LANTERN_SOURCE_DIR "/tests/data/decimal/cases.txt")));
        QVERIFY(table.count(u" => "_qs) >= 70);
        for (const QString &line : table.split(u'\n')) {
            if (line.isEmpty() || line.startsWith(u'#'))
                continue;
            const qsizetype arrow = line.indexOf(u" => "_qs);
            QVERIFY2(arrow > 0, qPrintable(line));
            QTest::newRow(qPrintable(line.left(arrow))) << line.left(arrow) << line.mid(arrow + 4);
        }
    }

    void decimalOperations()
    {
        QFETCH(QString, asked);
        QTEST(outcome([&] { return decimal(asked.split(u' ', Qt::SkipEmptyParts)); }), "answer");
    }
};

QTEST_GUILESS_MAIN(TestVbRuntime)
#include "test_vb_runtime.moc"
