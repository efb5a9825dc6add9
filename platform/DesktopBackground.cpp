#include "platform/DesktopBackground.h"

#include "platform/RuntimeLog.h"

#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace {

constexpr int AnswerTimeLimitMs = 1500;

QString unquoted(QString text)
{
    text = text.trimmed();
    if (text.size() >= 2 && (text.startsWith(QLatin1Char('\'')) || text.startsWith(QLatin1Char('"')))
        && text.endsWith(text.front()))
        text = text.mid(1, text.size() - 2);
    return text;
}

// One question to a settings tool: its first line of output, or empty when the
// tool is missing, fails or takes too long.
QString ask(const QString &program, const QStringList &arguments)
{
    const QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        return QString();
    QProcess process;
    process.start(path, arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(AnswerTimeLimitMs)) {
        process.kill();
        process.waitForFinished(200);
        return QString();
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return QString();
    return QString::fromUtf8(process.readAllStandardOutput()).section(QLatin1Char('\n'), 0, 0).trimmed();
}

bool hasDesktop()
{
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

} // namespace

QColor DesktopBackground::defaultColour()
{
    return QColor(0x3a, 0x6e, 0xa5);
}

DesktopBackground DesktopBackground::plain(const QColor &colour)
{
    DesktopBackground background;
    background.m_colour = colour;
    return background;
}

QString DesktopBackground::pathFromSetting(const QString &answer)
{
    const QString text = unquoted(answer);
    if (text.startsWith(QLatin1String("file:")))
        return QUrl(text).toLocalFile();
    if (text.startsWith(QLatin1Char('/')))
        return text;
    return QString();
}

QColor DesktopBackground::colourFromSetting(const QString &answer)
{
    const QString text = unquoted(answer);
    if (!text.startsWith(QLatin1Char('#')))
        return QColor();
    return QColor::fromString(text);
}

DesktopBackground::Placement DesktopBackground::placementFromSetting(const QString &answer)
{
    const QString text = unquoted(answer);
    if (text == QLatin1String("stretched"))
        return Placement::Stretched;
    if (text == QLatin1String("scaled"))
        return Placement::Scaled;
    if (text == QLatin1String("centered"))
        return Placement::Centered;
    if (text == QLatin1String("wallpaper"))
        return Placement::Tiled;
    return Placement::Zoom;
}

DesktopBackground DesktopBackground::current()
{
    DesktopBackground background;
    if (!hasDesktop())
        return background;

    const QStringList gnome = {QStringLiteral("get"), QStringLiteral("org.gnome.desktop.background")};
    QString picture = pathFromSetting(ask(QStringLiteral("gsettings"), gnome + QStringList{QStringLiteral("picture-uri")}));
    if (!picture.isEmpty()) {
        background.m_picturePath = picture;
        background.m_placement = placementFromSetting(
            ask(QStringLiteral("gsettings"), gnome + QStringList{QStringLiteral("picture-options")}));
    }
    const QColor colour = colourFromSetting(
        ask(QStringLiteral("gsettings"), gnome + QStringList{QStringLiteral("primary-color")}));
    if (colour.isValid())
        background.m_colour = colour;

    if (background.m_picturePath.isEmpty()) {
        picture = pathFromSetting(ask(QStringLiteral("xfconf-query"),
                                      {QStringLiteral("-c"), QStringLiteral("xfce4-desktop"), QStringLiteral("-p"),
                                       QStringLiteral("/backdrop/screen0/monitor0/workspace0/last-image")}));
        background.m_picturePath = picture;
    }
    background.loadPicture();
    return background;
}

void DesktopBackground::loadPicture()
{
    if (m_picturePath.isEmpty() || !m_picture.isNull())
        return;
    QImageReader reader(m_picturePath);
    reader.setAutoTransform(true);
    m_picture = reader.read();
    if (m_picture.isNull())
        RuntimeLog::note("DesktopBackground", QStringLiteral("%1: %2").arg(m_picturePath, reader.errorString()));
}

void DesktopBackground::paint(QPainter &painter, const QRect &area) const
{
    if (m_picture.isNull()) {
        painter.fillRect(area, m_colour);
        return;
    }
    // Scaling a large picture is slow; repaints of the same area reuse it.
    if (m_rendered.size() != area.size())
        m_rendered = render(area.size());
    painter.drawPixmap(area.topLeft(), m_rendered);
}

QPixmap DesktopBackground::render(const QSize &areaSize) const
{
    QPixmap result(areaSize);
    result.fill(m_colour);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRect area(QPoint(), areaSize);
    switch (m_placement) {
    case Placement::Stretched:
        painter.drawImage(area, m_picture);
        break;
    case Placement::Scaled:
    case Placement::Zoom: {
        const Qt::AspectRatioMode mode = m_placement == Placement::Zoom ? Qt::KeepAspectRatioByExpanding
                                                                        : Qt::KeepAspectRatio;
        QRect target(QPoint(), m_picture.size().scaled(areaSize, mode));
        target.moveCenter(area.center());
        painter.drawImage(target, m_picture);
        break;
    }
    case Placement::Centered: {
        QRect target(QPoint(), m_picture.size());
        target.moveCenter(area.center());
        painter.drawImage(target.topLeft(), m_picture);
        break;
    }
    case Placement::Tiled:
        painter.drawTiledPixmap(area, QPixmap::fromImage(m_picture));
        break;
    }
    return result;
}
