#include "platform/keys/KeySender.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

// Keys typed through the routine reach the focused widget as from the
// keyboard, in order, and the routine never moves the focus.
class TestKeySender : public QObject
{
    Q_OBJECT

private:
    QWidget window;
    QTextEdit *edit = nullptr;
    QLineEdit *line = nullptr;

    void typeAndWait(const QString &keys)
    {
        KeySender::send(keys);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

private slots:
    void initTestCase()
    {
        auto *layout = new QVBoxLayout(&window);
        edit = new QTextEdit;
        line = new QLineEdit;
        layout->addWidget(edit);
        layout->addWidget(line);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    void init()
    {
        edit->clear();
        edit->setFocus();
        QTRY_VERIFY(edit->hasFocus());
    }

    void typesCharactersAndEditingKeys()
    {
        typeAndWait(QStringLiteral("abc{LEFT}{BACKSPACE}X~y"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("aX\nyc"));
    }

    void shiftAndCtrlPrefixes()
    {
        typeAndWait(QStringLiteral("one two{HOME}+{END}Z"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("Z"));
        typeAndWait(QStringLiteral(" tail^{LEFT}+^{RIGHT}{BACKSPACE}"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("Z "));
        typeAndWait(QStringLiteral("{+}{^}{~}{{}{}}{*}+a"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("Z +^~{}*A"));
    }

    void charactersWithoutAKeyArriveAsText()
    {
        typeAndWait(QStringLiteral("Ａにほんご"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("Ａにほんご"));
    }

    void tabKeysMoveTheFocusLikeTheKeyboard()
    {
        edit->setTabChangesFocus(true);
        typeAndWait(QStringLiteral("{TAB}q"));
        QVERIFY(line->hasFocus());
        QCOMPARE(line->text(), QStringLiteral("q"));
        typeAndWait(QStringLiteral("+{TAB}"));
        QVERIFY(edit->hasFocus());
        edit->setTabChangesFocus(false);
        line->clear();
    }

    // A tool window that does not take the focus leaves it where it was.
    void focusStaysWhileAToolWindowIsShown()
    {
        if (QGuiApplication::platformName() == QStringLiteral("offscreen"))
            QSKIP("the offscreen platform activates every window it shows");
        QWidget tool(nullptr, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
        tool.setAttribute(Qt::WA_ShowWithoutActivating);
        tool.resize(100, 50);
        tool.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tool));
        typeAndWait(QStringLiteral("ok"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("ok"));
        QVERIFY(edit->hasFocus());
        QCOMPARE(QGuiApplication::focusWindow(), window.windowHandle());
    }
};

QTEST_MAIN(TestKeySender)
#include "test_keysender.moc"
