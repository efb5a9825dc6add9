#include "app/FontWarmUp.h"

#include <QApplication>
#include <QFontDatabase>
#include <QTest>

#include <private/qfontdatabase_p.h>

#include <memory>

namespace {

bool qtDatabaseFilled()
{
    return QFontDatabasePrivate::instance()->populated;
}

// Started before the application object, as start-up does.
std::unique_ptr<FontWarmUp> early;

} // namespace

// Start-up fills the font database on a thread of its own: Qt's part only
// once the application object exists, and the main thread never waits on a
// thread that was not told to go on.
class FontWarmUpTest : public QObject
{
    Q_OBJECT

private slots:
    void waitsForTheApplication()
    {
        // Told nothing, a second warm-up stops after the font configuration.
        FontWarmUp untold;
        untold.finish();
        QVERIFY(!qtDatabaseFilled());
    }

    void fillsTheDatabaseOnItsOwnThread()
    {
        QVERIFY(!qtDatabaseFilled());
        early->applicationStarted();
        early->finish();
        // Filled without this thread asking for a single font.
        QVERIFY(qtDatabaseFilled());
        QVERIFY(QFontDatabase::hasFamily(QStringLiteral("IPAexGothic")));
        // Telling it twice, or finishing twice, changes nothing.
        early->applicationStarted();
        early->finish();
    }
};

int main(int argc, char **argv)
{
    early = std::make_unique<FontWarmUp>();
    QApplication application(argc, argv);
    FontWarmUpTest test;
    const int status = QTest::qExec(&test, argc, argv);
    early.reset();
    return status;
}

#include "test_font_warmup.moc"
