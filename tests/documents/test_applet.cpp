// The plain applet: the neutral behaviour every applet starts from.
#include "documents/Applet.h"
#include "documents/DocumentRecord.h"
#include "platform/PrinterDevice.h"
#include "platform/touch/TouchEdit.h"
#include "support/AppletTestHost.h"
#include "tools/InfoDlg.h"
#include "tools/Printing.h"

#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

class TestApplet : public QObject
{
    Q_OBJECT

private slots:
    void loadAndReloadTakeTheHostsObjects();
    void printoutBeepsUnlessTheKindIs10();
    void propertiesAndUpdateAnswerNothing();
    void kind11IsEightHundredBySixHundredPixels();
    void innerCoordinatesRunTo800By600();
    void keyCheckPutsTouchEditIntoHiragana();
    void keyCheckLeavesOtherControlsAlone();
    void printingDefineHandsTheCodesOverInOrder();
    void keysAndClicksReachTheHostOnlyInKind10();
};

void TestApplet::loadAndReloadTakeTheHostsObjects()
{
    AppletTestHost host;
    auto *applet = new Applet(&host);
    QCOMPARE(applet->host(), nullptr);
    applet->Load();
    QCOMPARE(applet->host(), static_cast<AppletHost *>(&host));
    QCOMPARE(applet->infoDlg(), nullptr);
    applet->Reload();
    QCOMPARE(applet->infoDlg(), host.infoDlg());
    QCOMPARE(applet->printing(), host.printing());

    // Outside the main window there is no host, and nothing to take.
    Applet orphan;
    orphan.Load();
    orphan.Reload();
    QCOMPARE(orphan.host(), nullptr);
    QCOMPARE(orphan.infoDlg(), nullptr);
}

void TestApplet::printoutBeepsUnlessTheKindIs10()
{
    Applet applet;
    int beeps = 0;
    connect(&applet, &Applet::beeped, this, [&] { ++beeps; });

    applet.setDocument(0);
    QCOMPARE(applet.Printout(), false);
    QCOMPARE(beeps, 1);

    applet.setDocument(11);
    QCOMPARE(applet.Printout(), false);
    QCOMPARE(beeps, 2);

    applet.setDocument(10);
    QCOMPARE(applet.Printout(), false);
    QCOMPARE(beeps, 2);
}

void TestApplet::propertiesAndUpdateAnswerNothing()
{
    Applet applet;
    int changes = 0;
    connect(&applet, &Applet::propertiesChanged, this, [&] { ++changes; });
    applet.setProperties(QStringLiteral("Zoom"), 200);
    applet.setPropertiesObject(QStringLiteral("Zoom"), &applet);
    QVERIFY(!applet.Properties(QStringLiteral("Zoom")).isValid());
    QVERIFY(!applet.Update(QStringLiteral("Timestamp")).isValid());
    QCOMPARE(changes, 0);

    applet.Start();
    QVERIFY(applet.isStarted());
}

void TestApplet::kind11IsEightHundredBySixHundredPixels()
{
    Applet applet;
    applet.resize(300, 200);
    applet.setDocument(11);
    QCOMPARE(applet.Document(), 11);
    QCOMPARE(applet.size(), QSize(800, 600));

    // Other kinds keep the size.
    applet.resize(300, 200);
    applet.setDocument(10);
    QCOMPARE(applet.Document(), 10);
    QCOMPARE(applet.size(), QSize(300, 200));
}

void TestApplet::innerCoordinatesRunTo800By600()
{
    Applet applet;
    applet.resize(1600, 300);
    applet.Load();
    QCOMPARE(applet.innerToPixels(QPointF(800, 600)), QPointF(1600, 300));
    QCOMPARE(applet.innerToPixels(QPointF(400, 150)), QPointF(800, 75));
    QCOMPARE(applet.pixelsToInner(QPointF(800, 75)), QPointF(400, 150));
}

void TestApplet::keyCheckPutsTouchEditIntoHiragana()
{
    AppletTestHost host;
    auto *applet = new Applet(&host);
    auto *edit = new TouchEdit(applet);
    host.show();
    host.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    applet->Load();
    applet->Reload();
    edit->setFocus();
    QCOMPARE(applet->ActiveCtrl(), edit);

    for (qint32 code : {9, 3, 0, -4, 40}) {
        edit->setImeMode(TouchEdit::ImeAlpha);
        applet->InfoDlg_KeyCheck(code);
        QCOMPARE(edit->imeMode(), int(TouchEdit::ImeAlpha));
    }
    for (qint32 code = 4; code <= 8; ++code) {
        edit->setImeMode(TouchEdit::ImeAlpha);
        applet->InfoDlg_KeyCheck(code);
        QCOMPARE(edit->imeMode(), 4);
    }

    // The dialog's own event reaches the handler once Reload has connected it.
    edit->setImeMode(TouchEdit::ImeOff);
    qint32 first = 6;
    qint32 second = 0;
    QString text = QStringLiteral("あ");
    emit host.infoDlg()->KeyCheck(first, second, text);
    QCOMPARE(edit->imeMode(), 4);
}

void TestApplet::keyCheckLeavesOtherControlsAlone()
{
    AppletTestHost host;
    auto *applet = new Applet(&host);
    auto *plain = new QLineEdit(applet);
    auto *edit = new TouchEdit(applet);
    edit->setImeMode(TouchEdit::ImeAlpha);
    host.show();
    host.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    plain->setFocus();
    applet->InfoDlg_KeyCheck(5);
    QCOMPARE(edit->imeMode(), int(TouchEdit::ImeAlpha));

    // No active control at all.
    plain->clearFocus();
    QCOMPARE(applet->ActiveCtrl(), nullptr);
    applet->InfoDlg_KeyCheck(5);
    QCOMPARE(edit->imeMode(), int(TouchEdit::ImeAlpha));
}

void TestApplet::printingDefineHandsTheCodesOverInOrder()
{
    AppletTestHost host;
    auto *applet = new Applet(&host);
    applet->Load();
    applet->Reload();
    DocumentRecord record;
    record.PaperSetting1 = 8;
    record.PaperSetting2 = 7;
    record.PaperSetting3 = 2;
    record.PaperSetting4 = 2;
    record.PaperSetting5 = -4;
    record.Copies = 3;
    record.Zoom = 150;
    applet->setRecord(&record);

    // The job's printer: a PDF file, so that no print system is involved.
    QTemporaryDir folder;
    host.printing()->setPrinter(std::make_unique<PrinterDevice>(folder.filePath(QStringLiteral("job.pdf"))));
    PrinterDevice *printer = host.printing()->printer();
    printer->setCopies(1);
    printer->setZoom(100);

    // An event from somebody else's printing object changes nothing.
    Printing stranger;
    connect(&stranger, &Printing::Define, applet, &Applet::Printing_Define);
    emit stranger.Define(1, nullptr);
    QCOMPARE(printer->copies(), 1);
    QCOMPARE(printer->zoom(), 100);

    emit host.printing()->Define(1, nullptr);
    QCOMPARE(printer->paperSize(), 8);
    QCOMPARE(printer->paperBin(), 7);
    QCOMPARE(printer->orientation(), 2);
    // (Duplex, the fourth code, is not kept by a PDF printer, which is one-sided.)
    QCOMPARE(printer->printQuality(), -4);
    QCOMPARE(printer->copies(), 3);
    QCOMPARE(printer->zoom(), 150);
}

void TestApplet::keysAndClicksReachTheHostOnlyInKind10()
{
    AppletTestHost host;
    auto *applet = new Applet(&host);
    auto *edit = new QLineEdit(applet);
    host.show();
    host.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    applet->Load();
    QList<qint32> codes;
    connect(applet, &Applet::keyOrPointer, this, [&](qint32 &code, bool &) { codes.append(code); });

    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Q);
    QVERIFY(codes.isEmpty());

    applet->setDocument(10);
    QTest::mouseClick(edit, Qt::RightButton);
    QTest::keyClick(edit, Qt::Key_Q);
    QCOMPARE(codes, QList<qint32>({qint32(Qt::RightButton), qint32(Qt::Key_Q)}));
    QCOMPARE(edit->text(), QStringLiteral("qq"));
}

QTEST_MAIN(TestApplet)
#include "test_applet.moc"
