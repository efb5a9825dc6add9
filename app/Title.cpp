#include "app/Title.h"
#include "app/TitleArtwork.h"
#include "platform/PlainBitmap.h"

#include <QCoreApplication>
#include <QPainter>

Title::Title(QWidget *parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("Title"));
    setWindowTitle(QStringLiteral("Lantern"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFixedSize(TitleArtwork::size());
    // The load handler's one job: take the picture.
    m_picture = picture(QCoreApplication::applicationDirPath() + QStringLiteral("/SKIN/") + TitleArtwork::fileName());
}

Title::~Title()
{
    // The unload handler releases the picture.
    m_picture = QPixmap();
}

QPixmap Title::picture(const QString &path)
{
    // The picture drawn at build time; drawn here only when it is missing
    // or is not a plain bitmap of the splash's size.
    const QImage prepared = PlainBitmap::read(path);
    if (prepared.size() == TitleArtwork::size())
        return QPixmap::fromImage(prepared);
    return QPixmap::fromImage(TitleArtwork::draw(TitleArtwork::size()));
}

void Title::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
}
