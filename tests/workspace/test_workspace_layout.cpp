#include "app/Globals.h"
#include "tools/InfoDlg.h"
#include "workspace/WorkspaceLayout.h"

#include <QAbstractButton>
#include <QTest>

// The main window's places at the screen sizes users have, with no pad,
// the calculator, the character pad, or both open: an open pad docks where
// it covers nothing the user may click.
class WorkspaceLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Globals::InstallPath = QStringLiteral(LANTERN_PROGRAM_DIR);
    }

    // With the character pad alone open its keys are 44 pixels and its command
    // captions 16 at 1366 by 768, and shrink no more than the screen does.
    void openPadsCoverNothing_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QList<int>>("modes");
        QTest::addColumn<bool>("floatingHints");
        QTest::addColumn<double>("shrink");
        const std::pair<QSize, double> screens[] = {
            {{1024, 768}, 0.75}, {{1280, 1024}, 1280 / 1366.0}, {{1366, 768}, 1.0}, {{1920, 1080}, 1.0}};
        for (const auto &[screen, shrink] : screens) {
            const QByteArray size = QByteArray::number(screen.width()) + 'x' + QByteArray::number(screen.height());
            QTest::newRow(size + " calculator") << screen << QList<int>{InfoDlg::CalculatorMode} << false << shrink;
            QTest::newRow(size + " pad") << screen << QList<int>{InfoDlg::CharacterMode} << true << shrink;
            QTest::newRow(size + " both") << screen << QList<int>{InfoDlg::CalculatorMode, InfoDlg::CharacterMode} << true
                                          << shrink;
        }
    }

    void openPadsCoverNothing()
    {
        QFETCH(QSize, window);
        QFETCH(QList<int>, modes);
        QFETCH(bool, floatingHints);
        QFETCH(double, shrink);
        InfoDlg dialog;
        for (int mode : modes)
            dialog.Begin(InfoDlg::Mode(mode));
        const WorkspaceLayout plain(window);
        // The pads as the window sizes them.
        dialog.fitPadScale(WorkspaceLayout::padScale(window), plain.padRoom());
        QCoreApplication::sendPostedEvents();
        dialog.adjustSize();
        const WorkspaceLayout docked(window, dialog.size(), WorkspaceLayout::Character::On);
        const QRect pad(docked.toolDialogAt(), dialog.size());

        QList<QRect> clickable{docked.documentBar(), docked.formatBar(), docked.document(), docked.endButton()};
        for (int place = 0; place < WorkspaceLayout::MainButtonPlaces; ++place)
            clickable.append(docked.mainButton(place));
        if (!docked.infoBarFloats())
            clickable.append(docked.infoBar());
        // The character stands clear of all of it, and of the centred boxes;
        // over a wide pad it steps aside.
        const QRect box(QPoint((window.width() - docked.boxSize().width()) / 2, 0), docked.boxSize());
        QCOMPARE(docked.perch().isEmpty(), floatingHints);
        for (const QRect &place : std::as_const(clickable) + QList<QRect>{pad, QRect(box.left(), 0, box.width(), window.height())})
            QVERIFY2(!docked.perch().intersects(place), "the character covers nothing");
        QVERIFY2(QRect(QPoint(), window).contains(pad), "the pad lies on the screen");
        for (const QRect &place : std::as_const(clickable)) {
            QVERIFY2(QRect(QPoint(), window).contains(place), "every place lies on the screen");
            QVERIFY2(!place.intersects(pad), "nothing lies under the pad");
        }
        QCOMPARE(docked.infoBarFloats(), floatingHints);
        if (floatingHints) {
            QVERIFY(docked.document().contains(docked.infoBar()));
        } else {
            // The calculator leaves the side bars their whole height.
            QCOMPARE(docked.documentBar(), plain.documentBar());
            QCOMPARE(docked.infoBar().left(), plain.infoBar().left());
            QVERIFY(docked.perch().width() >= 64);
        }
        if (modes != QList<int>{InfoDlg::CharacterMode})
            return;
        // A key's face is its 30-unit cell less a unit on each side.
        QVERIFY2(28 * dialog.padScale() >= 44 * shrink, qPrintable(QString::number(28 * dialog.padScale())));
        for (QAbstractButton *button : std::as_const(dialog.MiniChannels))
            QVERIFY(button->font().pixelSize() >= qFloor(16 * shrink));
    }
};

QTEST_MAIN(WorkspaceLayoutTest)
#include "test_workspace_layout.moc"
