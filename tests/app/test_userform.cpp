#include "app/UserForm.h"
#include "platform/touch/TouchPanel.h"

#include <QMouseEvent>
#include <QtTest>

namespace {

// Stands in for the control that received the mouse press: it remembers the
// button releases it is sent.
class Grip : public QWidget
{
public:
    using QWidget::QWidget;
    QList<std::pair<Qt::MouseButton, QPoint>> releases;

protected:
    void mouseReleaseEvent(QMouseEvent *event) override { releases.append({event->button(), event->position().toPoint()}); }
};

} // namespace

class TestUserForm : public QObject
{
    Q_OBJECT

private slots:
    void parentAndContainerTellFormsFromControls()
    {
        QWidget form;
        auto *control = new QWidget(&form);
        auto *window = new QWidget;
        window->move(30, 40);
        UserForm shaper;
        shaper.SetWindow(window);
        shaper.SetContainer(control);
        QCOMPARE(shaper.Parent(), nullptr);
        QCOMPARE(window->parentWidget(), control);
        QCOMPARE(window->pos(), QPoint(30, 40));

        shaper.SetParent(&form);
        QCOMPARE(shaper.Container(), nullptr);
        QCOMPARE(window->parentWidget(), &form);
        // A window that was on screen stays on screen in its new home.
        form.show();
        shaper.SetContainer(control);
        QVERIFY(window->isVisible());
    }

    // Move and Size release the pressing control at once (the left button at
    // its origin), and the box follows the pointer until the real release:
    // moved, or grown at the right (1), the bottom (2) or both (3).
    void dragFromAPress_data()
    {
        QTest::addColumn<int>("edge"); // -1: Move
        QTest::addColumn<bool>("control");
        QTest::addColumn<QRect>("dragged");
        QTest::newRow("move") << -1 << true << QRect(140, 110, 300, 200);
        QTest::newRow("move, no control") << -1 << false << QRect(140, 110, 300, 200);
        QTest::newRow("0 none") << 0 << true << QRect(100, 80, 300, 200);
        QTest::newRow("1 right") << 1 << true << QRect(100, 80, 340, 200);
        QTest::newRow("2 bottom") << 2 << true << QRect(100, 80, 300, 230);
        QTest::newRow("3 bottom-right") << 3 << true << QRect(100, 80, 340, 230);
        QTest::newRow("4 none") << 4 << true << QRect(100, 80, 300, 200);
    }

    void dragFromAPress()
    {
        QFETCH(int, edge);
        QFETCH(bool, control);
        // A form with a box inside it and a grip in the box's bottom-right corner, as the workspace has.
        QWidget form;
        auto *box = new QWidget(&form);
        auto *grip = new Grip(box);
        form.resize(900, 700);
        box->setGeometry(100, 80, 300, 200);
        grip->setGeometry(270, 170, 30, 30);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        UserForm shaper;
        shaper.SetWindow(box);
        // The pointer goes where it presses, as a real one would.
        QCursor::setPos(grip->mapToGlobal(QPoint(10, 10)));
        QTest::mousePress(grip, Qt::LeftButton, {}, QPoint(10, 10));
        edge < 0 ? shaper.Move(control ? grip : nullptr) : shaper.Size(control ? grip : nullptr, edge);
        const QList<std::pair<Qt::MouseButton, QPoint>> released{{Qt::LeftButton, QPoint(0, 0)}};
        QCOMPARE(grip->releases, control ? released : decltype(released)());
        QTest::mouseMove(&form, QPoint(420, 290));
        QTEST(box->geometry(), "dragged");
        QTest::mouseRelease(&form, Qt::LeftButton, {}, QPoint(420, 290));
        QTest::mouseMove(&form, QPoint(600, 500));
        QTEST(box->geometry(), "dragged");
    }

    // Menu and title bar are flipped by a false, not cleared; on top is set or cleared.
    void styleSwitches_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<quint32>("before");
        QTest::addColumn<bool>("written");
        QTest::addColumn<quint32>("after");
        QTest::addColumn<bool>("read");
        const quint32 menu = UserForm::WS_SYSMENU, caption = UserForm::WS_CAPTION, top = UserForm::WS_EX_TOPMOST;
        QTest::newRow("menu on, false") << "MenuBox" << menu << false << 0u << false;
        QTest::newRow("menu off, false") << "MenuBox" << 0u << false << menu << true;
        QTest::newRow("menu off, true") << "MenuBox" << 0u << true << menu << true;
        QTest::newRow("menu on, true") << "MenuBox" << menu << true << menu << true;
        QTest::newRow("caption, false") << "TitleBar" << caption << false << 0u << false;
        QTest::newRow("no caption, false") << "TitleBar" << 0u << false << caption << true;
        QTest::newRow("border half, false") << "TitleBar" << UserForm::WS_BORDER << false << UserForm::WS_DLGFRAME << true;
        QTest::newRow("border half, true") << "TitleBar" << UserForm::WS_BORDER << true << caption << true;
        QTest::newRow("other bits kept") << "TitleBar" << menu << false << (menu | caption) << true;
        QTest::newRow("on top, false") << "Clip" << top << false << 0u << false;
        QTest::newRow("not on top, false") << "Clip" << 0u << false << 0u << false;
        QTest::newRow("not on top, true") << "Clip" << 0u << true << top << true;
    }

    void styleSwitches()
    {
        QFETCH(QString, property);
        QFETCH(quint32, before);
        QFETCH(bool, written);
        QFETCH(bool, read);
        QWidget window;
        window.show();
        UserForm shaper;
        shaper.SetWindow(&window);
        const bool clip = property == "Clip";
        clip ? shaper.SetExStyle(before) : shaper.SetStyle(before);
        if (property == "MenuBox")
            shaper.SetMenuBox(written);
        else if (property == "TitleBar")
            shaper.SetTitleBar(written);
        else
            shaper.SetClip(written);
        QTEST(clip ? shaper.ExStyle() : shaper.Style(), "after");
        // A second wrapper of the same window reads the same, and Qt's window flags agree.
        UserForm other;
        other.SetWindow(&window);
        const Qt::WindowFlags flags = window.windowFlags();
        if (property == "MenuBox")
            QVERIFY(other.MenuBox() == read && flags.testFlag(Qt::WindowSystemMenuHint) == read);
        else if (property == "TitleBar")
            QVERIFY(other.TitleBar() == read && flags.testFlag(Qt::WindowTitleHint) == read
                    && flags.testFlag(Qt::FramelessWindowHint) == !read);
        else
            QVERIFY(other.Clip() == read && flags.testFlag(Qt::WindowStaysOnTopHint) == read);
        QVERIFY(window.isVisible());
    }

    void activateAndDeactivateDriveThePaintedFrame()
    {
        QWidget form;
        auto *box = new TouchPanel(QStringLiteral("スタート"), &form);
        UserForm shaper;
        shaper.SetWindow(box);
        shaper.Deactivate();
        QVERIFY(!box->isFrameActive());
        shaper.Activate();
        QVERIFY(box->isFrameActive());
    }

    void setRoundCutsTheCorners()
    {
        QWidget window;
        window.resize(200, 100);
        UserForm shaper;
        shaper.SetWindow(&window);
        shaper.SetRound(200, 100, 40);
        for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 99), QPoint(199, 99), QPoint(3, 3)})
            QVERIFY2(!window.mask().contains(corner), qPrintable(QStringLiteral("%1,%2").arg(corner.x()).arg(corner.y())));
        for (const QPoint inside : {QPoint(100, 50), QPoint(100, 1), QPoint(1, 50), QPoint(198, 50), QPoint(100, 98)})
            QVERIFY2(window.mask().contains(inside), qPrintable(QStringLiteral("%1,%2").arg(inside.x()).arg(inside.y())));
        // The shape is given, not taken from the window: a smaller one cuts more.
        shaper.SetRound(120, 60, 0);
        QVERIFY(window.mask().contains(QPoint(0, 0)));
        QVERIFY(!window.mask().contains(QPoint(150, 30)));
    }
};

QTEST_MAIN(TestUserForm)
#include "test_userform.moc"
