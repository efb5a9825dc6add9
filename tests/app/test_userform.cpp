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
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        releases.append({event->button(), event->position().toPoint()});
    }
};

// A form with a box inside it and a grip inside the box, as the workspace has.
struct Desk
{
    QWidget form;
    QWidget *box = nullptr;
    Grip *grip = nullptr;

    Desk()
    {
        form.resize(900, 700);
        box = new QWidget(&form);
        box->setGeometry(100, 80, 300, 200);
        grip = new Grip(box);
        grip->setGeometry(270, 170, 30, 30);
        form.show();
    }
};

// The pointer goes where it presses, as a real one would.
void pressOn(QWidget *widget, QPoint at)
{
    QCursor::setPos(widget->mapToGlobal(at));
    QTest::mousePress(widget, Qt::LeftButton, {}, at);
}

} // namespace

class TestUserForm : public QObject
{
    Q_OBJECT

private slots:
    void parentAndContainerTellFormsFromControls();
    void moveDragsTheBoxAndReleasesTheControl();
    void moveCarriesAWindowWhereTheWindowManagerCannot();
    void sizeFollowsTheEdgeCode_data();
    void sizeFollowsTheEdgeCode();
    void menuBoxFlipsWhenWrittenFalse();
    void titleBarCountsEitherCaptionBit();
    void clipKeepsTheWindowOnTop();
    void activateAndDeactivateDriveThePaintedFrame();
    void setRoundCutsTheCorners();
};

void TestUserForm::parentAndContainerTellFormsFromControls()
{
    QWidget form;
    auto *control = new QWidget(&form);
    auto *window = new QWidget;
    window->move(30, 40);
    UserForm shaper;
    shaper.SetWindow(window);

    shaper.SetContainer(control);
    QCOMPARE(shaper.Container(), control);
    QCOMPARE(shaper.Parent(), nullptr);
    QCOMPARE(window->parentWidget(), control);
    QVERIFY(!window->isWindow());
    QCOMPARE(window->pos(), QPoint(30, 40));

    shaper.SetParent(&form);
    QCOMPARE(shaper.Parent(), &form);
    QCOMPARE(shaper.Container(), nullptr);
    QCOMPARE(window->parentWidget(), &form);
    QCOMPARE(shaper.Host(), &form);

    // A window that was on screen stays on screen in its new home.
    form.show();
    QVERIFY(window->isVisible());
    shaper.SetContainer(control);
    QVERIFY(window->isVisible());
}

void TestUserForm::moveDragsTheBoxAndReleasesTheControl()
{
    Desk desk;
    QVERIFY(QTest::qWaitForWindowExposed(&desk.form));
    UserForm shaper;
    shaper.SetWindow(desk.box);

    pressOn(desk.grip, QPoint(10, 10));
    shaper.Move(desk.grip);
    // The control is released at once, with the left button at its origin.
    QCOMPARE(desk.grip->releases.size(), 1);
    QCOMPARE(desk.grip->releases.first().first, Qt::LeftButton);
    QCOMPARE(desk.grip->releases.first().second, QPoint(0, 0));

    QTest::mouseMove(&desk.form, QPoint(100 + 280 + 100, 80 + 180 + 50));
    QCOMPARE(desk.box->geometry(), QRect(200, 130, 300, 200));
    QTest::mouseRelease(&desk.form, Qt::LeftButton, {}, QPoint(480, 310));
    // After the real release the box no longer follows the pointer.
    QTest::mouseMove(&desk.form, QPoint(600, 500));
    QCOMPARE(desk.box->pos(), QPoint(200, 130));

    // Without a control nothing is sent, and the move still happens.
    pressOn(&desk.form, QPoint(250, 150));
    shaper.Move(nullptr);
    QTest::mouseMove(&desk.form, QPoint(240, 150));
    QTest::mouseRelease(&desk.form, Qt::LeftButton, {}, QPoint(240, 150));
    QCOMPARE(desk.box->pos(), QPoint(190, 130));
    QCOMPARE(desk.grip->releases.size(), 1);
}

void TestUserForm::moveCarriesAWindowWhereTheWindowManagerCannot()
{
    // No window manager runs here, so the move is carried out by hand.
    QWidget window;
    window.setGeometry(100, 100, 300, 200);
    auto *grip = new Grip(&window);
    grip->setGeometry(0, 0, 300, 40);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QPoint start = window.pos();
    UserForm shaper;
    shaper.SetWindow(&window);

    pressOn(grip, QPoint(10, 10));
    shaper.Move(grip);
    QCOMPARE(grip->releases.size(), 1);
    QTest::mouseMove(grip, QPoint(60, 40));
    QTRY_COMPARE(window.pos(), start + QPoint(50, 30));
    QTest::mouseRelease(grip, Qt::LeftButton, {}, QPoint(10, 10));
}

void TestUserForm::sizeFollowsTheEdgeCode_data()
{
    QTest::addColumn<int>("edge");
    QTest::addColumn<QSize>("grown");
    QTest::newRow("1 right") << 1 << QSize(340, 200);
    QTest::newRow("2 bottom") << 2 << QSize(300, 230);
    QTest::newRow("3 bottom-right") << 3 << QSize(340, 230);
    QTest::newRow("4 none") << 4 << QSize(300, 200);
    QTest::newRow("0 none") << 0 << QSize(300, 200);
}

void TestUserForm::sizeFollowsTheEdgeCode()
{
    QFETCH(int, edge);
    QFETCH(QSize, grown);
    Desk desk;
    QVERIFY(QTest::qWaitForWindowExposed(&desk.form));
    UserForm shaper;
    shaper.SetWindow(desk.box);

    pressOn(desk.grip, QPoint(10, 10));
    shaper.Size(desk.grip, edge);
    // Whatever the edge, the control gets its button-up.
    QCOMPARE(desk.grip->releases.size(), 1);
    QCOMPARE(desk.grip->releases.first().first, Qt::LeftButton);
    QTest::mouseMove(&desk.form, QPoint(380 + 40, 260 + 30));
    QTest::mouseRelease(&desk.form, Qt::LeftButton, {}, QPoint(420, 290));
    QCOMPARE(desk.box->size(), grown);
    QCOMPARE(desk.box->pos(), QPoint(100, 80));
}

void TestUserForm::menuBoxFlipsWhenWrittenFalse()
{
    QWidget window;
    UserForm shaper;
    shaper.SetWindow(&window);
    QVERIFY(shaper.MenuBox());

    shaper.SetMenuBox(false);
    QVERIFY(!shaper.MenuBox());
    QVERIFY(!(window.windowFlags() & Qt::WindowSystemMenuHint));
    // Written false a second time, the bit comes back.
    shaper.SetMenuBox(false);
    QVERIFY(shaper.MenuBox());
    QVERIFY(window.windowFlags() & Qt::WindowSystemMenuHint);
    shaper.SetMenuBox(true);
    QVERIFY(shaper.MenuBox());
    QCOMPARE(shaper.Style() & UserForm::WS_SYSMENU, UserForm::WS_SYSMENU);

    // A second wrapper of the same window reads the same word.
    shaper.SetMenuBox(false);
    UserForm other;
    other.SetWindow(&window);
    QVERIFY(!other.MenuBox());

    // A borderless window without a menu gets one from a false.
    QWidget bare(nullptr, Qt::FramelessWindowHint);
    UserForm plain;
    plain.SetWindow(&bare);
    QVERIFY(!plain.MenuBox());
    plain.SetMenuBox(false);
    QVERIFY(plain.MenuBox());
}

void TestUserForm::titleBarCountsEitherCaptionBit()
{
    QWidget window;
    UserForm shaper;
    shaper.SetWindow(&window);
    QVERIFY(shaper.TitleBar());
    shaper.SetTitleBar(false);
    QVERIFY(!shaper.TitleBar());
    QVERIFY(window.windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(!(window.windowFlags() & Qt::WindowTitleHint));

    // Only the border half of the caption: still a title bar.
    shaper.SetStyle(UserForm::WS_BORDER);
    QVERIFY(shaper.TitleBar());
    QVERIFY(window.windowFlags() & Qt::WindowTitleHint);
    // Writing false flips both bits: the window ends with the other half.
    shaper.SetTitleBar(false);
    QCOMPARE(shaper.Style() & UserForm::WS_CAPTION, UserForm::WS_DLGFRAME);
    QVERIFY(shaper.TitleBar());
    shaper.SetTitleBar(true);
    QCOMPARE(shaper.Style() & UserForm::WS_CAPTION, UserForm::WS_CAPTION);
    // The other style bits are left alone.
    shaper.SetStyle(UserForm::WS_SYSMENU);
    shaper.SetTitleBar(false);
    QCOMPARE(shaper.Style(), UserForm::WS_SYSMENU | UserForm::WS_CAPTION);
}

void TestUserForm::clipKeepsTheWindowOnTop()
{
    QWidget window;
    window.show();
    UserForm shaper;
    shaper.SetWindow(&window);
    QVERIFY(!shaper.Clip());
    shaper.SetClip(true);
    QVERIFY(shaper.Clip());
    QVERIFY(window.windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(window.isVisible());
    // Not an exclusive or: false twice stays false.
    shaper.SetClip(false);
    shaper.SetClip(false);
    QVERIFY(!shaper.Clip());
    QVERIFY(!(window.windowFlags() & Qt::WindowStaysOnTopHint));
}

void TestUserForm::activateAndDeactivateDriveThePaintedFrame()
{
    QWidget form;
    auto *box = new TouchPanel(QStringLiteral("スタート"), &form);
    UserForm shaper;
    shaper.SetWindow(box);
    shaper.Deactivate();
    QVERIFY(!box->isFrameActive());
    shaper.Activate();
    QVERIFY(box->isFrameActive());

    auto *plain = new QWidget(&form);
    shaper.SetWindow(plain);
    shaper.Deactivate();
    QCOMPARE(plain->property("frameActive"), QVariant(false));
}

void TestUserForm::setRoundCutsTheCorners()
{
    QWidget window;
    window.resize(200, 100);
    UserForm shaper;
    shaper.SetWindow(&window);
    shaper.SetRound(200, 100, 40);
    const QRegion shape = window.mask();
    for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 99), QPoint(199, 99), QPoint(3, 3)})
        QVERIFY2(!shape.contains(corner), qPrintable(QStringLiteral("%1,%2").arg(corner.x()).arg(corner.y())));
    for (const QPoint inside : {QPoint(100, 50), QPoint(100, 1), QPoint(1, 50), QPoint(198, 50), QPoint(100, 98)})
        QVERIFY2(shape.contains(inside), qPrintable(QStringLiteral("%1,%2").arg(inside.x()).arg(inside.y())));
    // The shape is given, not taken from the window: a smaller one cuts more.
    shaper.SetRound(120, 60, 0);
    QVERIFY(window.mask().contains(QPoint(0, 0)));
    QVERIFY(!window.mask().contains(QPoint(150, 30)));
}

QTEST_MAIN(TestUserForm)
#include "test_userform.moc"
