#include "platform/handwriting/HandwritingRecognizer.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using Stroke = HandwritingRecognizer::Stroke;

namespace {

// "x,y x,y|x,y ...": strokes in drawing order, in a box of 100.
QList<Stroke> strokesOf(const QString &drawing, double times = 1)
{
    QList<Stroke> strokes;
    for (const QString &line : drawing.split(u'|')) {
        Stroke stroke;
        for (const QString &point : line.split(u' ', Qt::SkipEmptyParts))
            stroke.append(QPointF(point.section(u',', 0, 0).toDouble(), point.section(u',', 1, 1).toDouble()) * times);
        strokes.append(stroke);
    }
    return strokes;
}

QString texts(const QList<HandwritingRecognizer::Candidate> &candidates)
{
    QString joined;
    for (const auto &candidate : candidates)
        joined += candidate.text;
    return joined;
}

} // namespace

// The system's recogniser with the Japanese model, fed strokes drawn as a
// hand draws them: in stroke order, a few points each.
class TestRecognizer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!HandwritingRecognizer().isAvailable())
            QSKIP("the Japanese handwriting model is not installed");
    }

    void charactersAreAmongTheFirstFive_data()
    {
        QTest::addColumn<QString>("drawing");
        QTest::addColumn<QString>("character");
        const std::pair<const char *, const char16_t *> rows[] = {
            {"10,50 90,50", u"一"},
            {"25,30 75,30|10,70 90,70", u"二"},
            {"20,20 80,20|30,50 70,50|10,82 90,82", u"三"},
            {"10,45 90,45|50,10 50,90", u"十"},
            {"30,30 30,70|30,30 70,30 70,70|30,68 70,68", u"口"},
            {"25,10 25,90|25,10 75,10 75,90|25,50 75,50|25,88 75,88", u"日"},
            {"50,10 45,50 15,90|48,45 85,90", u"人"},
            {"65,10 30,50 65,90", u"く"},
            {"35,10 35,70 45,85 60,85 80,70", u"し"},
            {"10,60 35,35 90,75", u"へ"},
            {"25,20 22,55 28,80 35,75|70,30 80,50 82,70", u"い"},
            {"35,30 65,30 58,38|30,62 40,72 75,72", u"こ"},
        };
        for (const auto &[drawing, character] : rows)
            QTest::newRow(drawing) << QString::fromUtf8(drawing) << QString::fromUtf16(character);
    }

    void charactersAreAmongTheFirstFive()
    {
        QFETCH(QString, drawing);
        QFETCH(QString, character);
        HandwritingRecognizer recognizer;
        const QString firstFive = texts(recognizer.recognize(strokesOf(drawing), 100, 5));
        QVERIFY2(firstFive.contains(character), qPrintable(character + QStringLiteral(" not in ") + firstFive));
    }

    // Points are taken relative to the box: the same drawing three times as
    // large reads the same.
    void theBoxSizeDoesNotMatter()
    {
        HandwritingRecognizer recognizer;
        const QString drawing = QStringLiteral("25,10 25,90|25,10 75,10 75,90|25,50 75,50|25,88 75,88");
        QCOMPARE(texts(recognizer.recognize(strokesOf(drawing, 3), 300, 10)),
                 texts(recognizer.recognize(strokesOf(drawing), 100, 10)));
    }

    void bestFirstAndNoMoreThanAsked()
    {
        HandwritingRecognizer recognizer;
        const auto candidates = recognizer.recognize(strokesOf(QStringLiteral("10,45 90,45|50,10 50,90")), 100, 10);
        QCOMPARE(candidates.size(), 10);
        for (qsizetype i = 1; i < candidates.size(); ++i)
            QVERIFY(candidates[i - 1].score >= candidates[i].score);
    }

    void nothingToRead()
    {
        HandwritingRecognizer recognizer;
        QVERIFY(recognizer.recognize({}, 100, 10).isEmpty());
        QVERIFY(recognizer.recognize({Stroke()}, 100, 10).isEmpty());
        QVERIFY(recognizer.recognize(strokesOf(QStringLiteral("10,50 90,50")), 0, 10).isEmpty());
    }

    // The variable chooses the model; a missing or broken one leaves the
    // recogniser unavailable and answering nothing.
    void withoutTheModel()
    {
        QTemporaryDir folder;
        QFile broken(folder.filePath(QStringLiteral("broken.model")));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("not a model");
        broken.close();
        qputenv(HandwritingRecognizer::ModelVariable, folder.filePath(QStringLiteral("none.model")).toUtf8());
        QCOMPARE(HandwritingRecognizer::defaultModelPath(), folder.filePath(QStringLiteral("none.model")));
        qunsetenv(HandwritingRecognizer::ModelVariable);
        QCOMPARE(HandwritingRecognizer::defaultModelPath(), QString::fromLatin1(HandwritingRecognizer::DebianModel));

        for (const QString &path : {folder.filePath(QStringLiteral("none.model")), broken.fileName()}) {
            HandwritingRecognizer recognizer(path);
            QVERIFY(recognizer.recognize(strokesOf(QStringLiteral("10,50 90,50")), 100, 10).isEmpty());
            QVERIFY2(!recognizer.isAvailable(), qPrintable(path));
        }
    }
};

QTEST_GUILESS_MAIN(TestRecognizer)
#include "test_recognizer.moc"
