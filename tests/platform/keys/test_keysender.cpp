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

    void typedTextArrives_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        QTest::newRow("editing keys") << "abc{LEFT}{BACKSPACE}X~y" << "aX\nyc";
        QTest::newRow("shift selects") << "one two{HOME}+{END}Z" << "Z";
        QTest::newRow("ctrl moves by words") << "one tail^{LEFT}+^{RIGHT}{BACKSPACE}" << "one ";
        QTest::newRow("braced characters") << "{+}{^}{~}{{}{}}{*}+a" << "+^~{}*A";
        QTest::newRow("characters without a key") << "Ａにほんご" << "Ａにほんご";
    }

    void typedTextArrives()
    {
        QFETCH(QString, keys);
        typeAndWait(keys);
        QTEST(edit->toPlainText(), "text");
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
};

QTEST_MAIN(TestKeySender)
#include "test_keysender.moc"
