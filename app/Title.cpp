#include "app/Title.h"
#include "app/TitleArtwork.h"

#include <QCoreApplication>
#include <QImageReader>
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
    // The picture drawn at build time; drawn here only when it is missing.
    // Stored uncompressed and named by its format, it loads without a
    // decoder to find or to run.
    QImageReader reader(path, "BMP");
    if (reader.size() == TitleArtwork::size()) {
        const QImage prepared = reader.read();
        if (!prepared.isNull())
            return QPixmap::fromImage(prepared);
    }
    return QPixmap::fromImage(TitleArtwork::draw(TitleArtwork::size()));
}

void Title::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
}
