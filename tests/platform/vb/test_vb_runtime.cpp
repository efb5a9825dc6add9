#include "platform/vb/Decimal.h"
#include "platform/vb/VbConvert.h"
#include "platform/vb/VbDateFormat.h"
#include "platform/vb/VbDatePart.h"
#include "platform/vb/VbError.h"
#include "platform/vb/VbFormat.h"
#include "platform/vb/VbLike.h"
#include "platform/vb/VbRandom.h"
#include "platform/vb/VbStrConv.h"
#include "support/CaseTable.h"

#include <QtTest>

#include <functional>

// The runtime functions that the settings, the dates, the input pad, the
// wallpaper, the clock and the calculator rely on, as a Japanese system gives them.
class TestVbRuntime : public QObject
{
    Q_OBJECT

    static int seventhDigits(float value) { return qRound(value * 1e7); }

    // What each function gives for its arguments.
    static QString call(const QStringList &words)
    {
        using Function = std::function<QString(const QString &, const QString &)>;
        const auto at = [](const QString &text) { return QDateTime::fromString(text, u"yyyy-MM-dd HH:mm:ss"_qs); };
        const auto number = [](const QString &text) { return Decimal::fromText(text); };
        const QHash<QString, Function> functions{
            {u"Boolean"_qs, [](auto a, auto) { return VbConvert::fromBoolean(VbConvert::toBoolean(a)); }},
            {u"On/Off"_qs, [](auto a, auto) { return VbFormat::boolean(VbConvert::toBoolean(a), "On/Off"); }},
            {u"Long"_qs, [](auto a, auto) { return QString::number(VbConvert::toLong(a)); }},
            {u"Integer"_qs, [](auto a, auto) { return QString::number(VbConvert::toInteger(a)); }},
            {u"proper"_qs, [](auto a, auto) { return VbStrConv::properCase(a); }},
            {u"wide"_qs, [](auto a, auto) { return VbStrConv::wide(a); }},
            {u"narrow"_qs, [](auto a, auto) { return VbStrConv::narrow(a); }},
            {u"katakana"_qs, [](auto a, auto) { return VbStrConv::katakana(a); }},
            {u"hiragana"_qs, [](auto a, auto) { return VbStrConv::hiragana(a); }},
            {u"romaji"_qs, [](auto a, auto) { return VbStrConv::narrow(VbStrConv::katakana(a)); }},
            {u"Like"_qs, [](auto a, auto b) { return VbLike::match(a, b) ? u"True"_qs : u"False"_qs; }},
            {u"DateFormat"_qs, [at](auto a, auto b) { return VbDateFormat::format(at(a), b); }},
            {u"Format"_qs, [at](auto a, auto b) { return VbFormat::dateTime(at(a), b); }},
            {u"DatePart"_qs, [](auto a, auto b) {
                 return QString::number(VbDatePart::datePart(a, QDate::fromString(b, Qt::ISODate)));
             }},
            {u"whole"_qs, [](auto a, auto) { return Decimal(a.toLongLong()).toString(); }},
            {u"parse"_qs, [number](auto a, auto) { return number(a).toString(); }},
            {u"display"_qs, [number](auto a, auto) { return number(a).toDisplayText(); }},
            {u"currency"_qs, [number](auto a, auto) { return number(a).toCurrency().toString(); }},
            {u"add"_qs, [number](auto a, auto b) { return (number(a) + number(b)).toString(); }},
            {u"sub"_qs, [number](auto a, auto b) { return (number(a) - number(b)).toString(); }},
            {u"mul"_qs, [number](auto a, auto b) { return (number(a) * number(b)).toString(); }},
            {u"div"_qs, [number](auto a, auto b) { return (number(a) / number(b)).toString(); }},
            {u"compare"_qs, [number](auto a, auto b) {
                 return number(a) < number(b) ? u"<"_qs : number(a) == number(b) ? u"="_qs
                                                                                 : u">"_qs;
             }},
        };
        const Function function = functions.value(words.value(0));
        return function ? function(words.value(1), words.value(2)) : u"unknown function"_qs;
    }

private slots:
    // Every case in tests/data/vb_runtime: the function and its arguments
    // joined by "|", and the result with every digit of its scale, or "error N"
    // for a run-time error.
    void calls_data() { addCaseRows(QStringLiteral("vb_runtime"), 180); }

    void calls()
    {
        QFETCH(QString, asked);
        QString result;
        try {
            result = call(asked.split(u'|'));
        } catch (const VbError &error) {
            result = u"error %1"_qs.arg(error.number());
        }
        QTEST(result, "answer");
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
};

QTEST_GUILESS_MAIN(TestVbRuntime)
#include "test_vb_runtime.moc"
