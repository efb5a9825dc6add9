#include "platform/keys/KeyNotation.h"
#include "platform/keys/KeySender.h"
#include "support/CaseTable.h"

#include <QLineEdit>
#include <QMetaEnum>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

// The key-sending notation as the pads and the input method bridge write it,
// and the keys typed through the routine, which reach the focused widget as
// from the keyboard, in order, without moving the focus.
class TestKeys : public QObject
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
        // clang-format off
        QTest::newRow("editing keys") << "abc{LEFT}{BACKSPACE}X~y" << "aX\nyc";
        QTest::newRow("shift selects") << "one two{HOME}+{END}Z" << "Z";
        QTest::newRow("braced characters") << "{+}{^}{~}{{}{}}{*}+a" << "+^~{}*A";
        QTest::newRow("characters without a key") << "Ａにほんご" << "Ａにほんご";
        // clang-format on
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

    // Every case in tests/data/keys: the strokes a string gives.
    void strokes_data() { addCaseRows(QStringLiteral("keys"), 40); }

    void strokes()
    {
        QFETCH(QString, asked);
        QStringList strokes;
        for (const KeyStroke &stroke : KeyNotation::parse(asked)) {
            const char *key = QMetaEnum::fromType<Qt::Key>().valueToKey(stroke.key);
            const QByteArray modifiers = QMetaEnum::fromType<Qt::KeyboardModifiers>().valueToKeys(stroke.modifiers);
            strokes << QStringLiteral("%1 %2 %3 %4 %5")
                           .arg(key ? QString::fromLatin1(key) : u"U+"_qs + QString::number(stroke.key, 16).toUpper())
                           .arg(stroke.keysym, 0, 16)
                           .arg(stroke.keycode)
                           .arg(QString::fromLatin1(modifiers))
                           .arg(stroke.nativeModifiers());
        }
        QTEST(strokes.join(QStringLiteral(", ")), "answer");
    }
};

QTEST_MAIN(TestKeys)
#include "test_keys.moc"
