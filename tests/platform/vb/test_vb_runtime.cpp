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

// The runtime functions that the settings, the dates, the input pad, the
// wallpaper, the clock and the calculator rely on, as a Japanese system gives them.
class TestVbRuntime : public QObject
{
    Q_OBJECT

    static int seventhDigits(float value) { return qRound(value * 1e7); }

    // One call: the function's name, then its arguments.
    static QString call(const QStringList &words)
    {
        const QString &name = words.value(0), a = words.value(1), b = words.value(2);
        const auto at = [](const QString &text) { return QDateTime::fromString(text, u"yyyy-MM-dd HH:mm:ss"_qs); };
        if (name == u"Boolean")
            return VbConvert::fromBoolean(VbConvert::toBoolean(a));
        if (name == u"On/Off")
            return VbFormat::boolean(VbConvert::toBoolean(a), "On/Off");
        if (name == u"Long")
            return QString::number(VbConvert::toLong(a));
        if (name == u"Integer")
            return QString::number(VbConvert::toInteger(a));
        if (name == u"proper")
            return VbStrConv::properCase(a);
        if (name == u"wide")
            return VbStrConv::wide(a);
        if (name == u"narrow")
            return VbStrConv::narrow(a);
        if (name == u"katakana")
            return VbStrConv::katakana(a);
        if (name == u"hiragana")
            return VbStrConv::hiragana(a);
        if (name == u"romaji")
            return VbStrConv::narrow(VbStrConv::katakana(a));
        if (name == u"Like")
            return VbLike::match(a, b) ? u"True"_qs : u"False"_qs;
        if (name == u"DateFormat")
            return VbDateFormat::format(at(a), b);
        if (name == u"Format")
            return VbFormat::dateTime(at(a), b);
        if (name == u"DatePart")
            return QString::number(VbDatePart::datePart(a, QDate::fromString(b, Qt::ISODate)));
        if (name == u"whole")
            return Decimal(a.toLongLong()).toString();
        const Decimal x = Decimal::fromText(a);
        if (name == u"parse")
            return x.toString();
        if (name == u"display")
            return x.toDisplayText();
        if (name == u"currency")
            return x.toCurrency().toString();
        const Decimal y = Decimal::fromText(b);
        if (name == u"compare")
            return x < y ? u"<"_qs : x == y ? u"="_qs : u">"_qs;
        if (name == u"add")
            return (x + y).toString();
        if (name == u"sub")
            return (x - y).toString();
        if (name == u"mul")
            return (x * y).toString();
        if (name == u"div")
            return (x / y).toString();
        return u"unknown function"_qs;
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
