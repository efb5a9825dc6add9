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

#include <memory>

class TestApplet : public QObject
{
    Q_OBJECT

    // The applet in the stand-in main window, loaded, with a line edit and a
    // Touch edit field on it.
    std::unique_ptr<AppletTestHost> m_host;
    Applet *m_applet = nullptr;
    QLineEdit *m_plain = nullptr;
    TouchEdit *m_touch = nullptr;

private slots:
    void init()
    {
        m_host = std::make_unique<AppletTestHost>();
        m_applet = new Applet(m_host.get());
        m_plain = new QLineEdit(m_applet);
        m_touch = new TouchEdit(m_applet);
        m_host->show();
        m_host->activateWindow();
        m_applet->Load();
        m_applet->Reload();
        QVERIFY(QTest::qWaitForWindowActive(m_host.get()));
    }

    void cleanup() { m_host.reset(); }

    void neutralMembersAnswerNothing()
    {
        // Outside the main window there is no host, and nothing to take.
        Applet applet;
        applet.Load();
        applet.Reload();
        QCOMPARE(applet.host(), nullptr);
        QCOMPARE(applet.infoDlg(), nullptr);
        int beeps = 0, changes = 0;
        connect(&applet, &Applet::beeped, this, [&] { ++beeps; });
        connect(&applet, &Applet::propertiesChanged, this, [&] { ++changes; });
        // Printout never prints, and beeps unless the kind is 10.
        for (const auto &[kind, beepsAfter] : QList<QPair<int, int>>{{0, 1}, {11, 2}, {10, 2}, {9, 3}}) {
            applet.setDocument(kind);
            QCOMPARE(applet.Printout(), false);
            QCOMPARE(beeps, beepsAfter);
        }
        applet.setProperties(QStringLiteral("Zoom"), 200);
        applet.setPropertiesObject(QStringLiteral("Zoom"), &applet);
        QVERIFY(!applet.Properties(QStringLiteral("Zoom")).isValid());
        QVERIFY(!applet.Update(QStringLiteral("Timestamp")).isValid());
        QCOMPARE(changes, 0);

        // Kind 11 is 800 by 600 pixels, and inner coordinates run to 800 by 600.
        applet.resize(300, 200);
        applet.setDocument(10); // other kinds keep the size
        QCOMPARE(applet.size(), QSize(300, 200));
        applet.setDocument(11);
        QCOMPARE(applet.size(), QSize(800, 600));

        applet.resize(1600, 300);
        applet.Load();
        QCOMPARE(applet.innerToPixels(QPointF(800, 600)), QPointF(1600, 300));
        QCOMPARE(applet.innerToPixels(QPointF(400, 150)), QPointF(800, 75));
        QCOMPARE(applet.pixelsToInner(QPointF(800, 75)), QPointF(400, 150));
    }

    void keyCheckPutsOnlyATouchEditIntoHiraganaForCodes4To8()
    {
        TouchEdit *edit = m_touch;
        edit->setFocus();
        QCOMPARE(m_applet->ActiveCtrl(), edit);
        for (qint32 code : {-4, 0, 3, 4, 5, 6, 7, 8, 9, 40}) {
            edit->setImeMode(TouchEdit::ImeAlpha);
            m_applet->InfoDlg_KeyCheck(code);
            QCOMPARE(edit->imeMode(), code >= 4 && code <= 8 ? 4 : int(TouchEdit::ImeAlpha));
        }
        // The dialog's own event reaches the handler once Reload has connected it.
        edit->setImeMode(TouchEdit::ImeOff);
        qint32 first = 6, second = 0;
        QString text = QStringLiteral("あ");
        emit m_host->infoDlg()->KeyCheck(first, second, text);
        QCOMPARE(edit->imeMode(), 4);

        // Another control, or none, is left alone.
        edit->setImeMode(TouchEdit::ImeAlpha);
        m_plain->setFocus();
        m_applet->InfoDlg_KeyCheck(5);
        m_plain->clearFocus();
        QCOMPARE(m_applet->ActiveCtrl(), nullptr);
        m_applet->InfoDlg_KeyCheck(5);
        QCOMPARE(edit->imeMode(), int(TouchEdit::ImeAlpha));
    }

    void printingDefineHandsTheCodesOverInOrder()
    {
        DocumentRecord record{.PaperSetting1 = 8, .PaperSetting2 = 7, .PaperSetting3 = 2, .PaperSetting4 = 2, .PaperSetting5 = -4, .Copies = 3, .Zoom = 150};
        m_applet->setRecord(&record);
        // The job's printer: a PDF file, so that no print system is involved.
        QTemporaryDir folder;
        m_host->printing()->setPrinter(std::make_unique<PrinterDevice>(folder.filePath(QStringLiteral("job.pdf"))));
        PrinterDevice *printer = m_host->printing()->printer();
        printer->setCopies(1);
        printer->setZoom(100);

        // An event from somebody else's printing object changes nothing.
        Printing stranger;
        connect(&stranger, &Printing::Define, m_applet, &Applet::Printing_Define);
        emit stranger.Define(1, nullptr);
        QCOMPARE(printer->copies(), 1);
        QCOMPARE(printer->zoom(), 100);

        emit m_host->printing()->Define(1, nullptr);
        // (Duplex, the fourth code, is not kept by a PDF printer, which is one-sided.)
        QCOMPARE(QList<int>({printer->paperSize(), printer->paperBin(), printer->orientation(), printer->printQuality(),
                             printer->copies(), printer->zoom()}),
                 QList<int>({8, 7, 2, -4, 3, 150}));
    }

    void keysAndClicksReachTheHostOnlyInKind10()
    {
        QLineEdit *edit = m_plain;
        QList<qint32> codes;
        bool allow = true;
        connect(m_applet, &Applet::keyOrPointer, this, [&](qint32 &code, bool &proceed) {
            QCOMPARE(proceed, true);
            codes.append(code);
            proceed = allow;
        });
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Q);
        QVERIFY(codes.isEmpty());

        m_applet->setDocument(10);
        QTest::mouseClick(edit, Qt::RightButton);
        QTest::keyClick(edit, Qt::Key_Q);
        QCOMPARE(codes, QList<qint32>({qint32(Qt::RightButton), qint32(Qt::Key_Q)}));
        // The host cancels: the key does not arrive.
        allow = false;
        QTest::keyClick(edit, Qt::Key_B);
        QCOMPARE(edit->text(), QStringLiteral("qq"));
    }
};

QTEST_MAIN(TestApplet)
#include "test_applet.moc"
