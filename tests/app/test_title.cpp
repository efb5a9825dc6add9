#include "app/Title.h"

#include <QTest>

// The splash picture is drawn by the program: it must show something, at the
// splash's size, in every colour it was drawn with.
class TitleTest : public QObject
{
    Q_OBJECT

private slots:
    void artworkIsDrawn()
    {
        Title title;
        QCOMPARE(title.size(), QSize(560, 340));
        const QImage picture = Title::artwork(title.size()).toImage();
        QCOMPARE(picture.size(), title.size());
        // The lantern's paper glows warm in the middle of its body, the sky is
        // dark blue at the top.
        const QColor lantern = picture.pixelColor(151, 177);
        const QColor sky = picture.pixelColor(540, 5);
        QVERIFY2(lantern.red() > 200 && lantern.green() > 150, qPrintable(lantern.name()));
        QVERIFY2(sky.blue() > sky.red(), qPrintable(sky.name()));
        const QString folder = qEnvironmentVariable("LANTERN_BUILD_DIR");
        if (!folder.isEmpty())
            picture.save(folder + QStringLiteral("/screenshots/splash.png"));
    }
};

QTEST_MAIN(TitleTest)
#include "test_title.moc"
