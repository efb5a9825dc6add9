#include "support/PdfReadBack.h"
#include "support/ToolOutput.h"

#include <QRegularExpression>

static constexpr double pointsPerCm = 72 / 2.54;

QList<PdfReadBack::Word> PdfReadBack::words(const QString &pdf, int page)
{
    const QString html = toolOutput(QStringLiteral("pdftotext"),
                             { QStringLiteral("-bbox"), QStringLiteral("-f"), QString::number(page),
                               QStringLiteral("-l"), QString::number(page), pdf, QStringLiteral("-") });
    static const QRegularExpression word(QStringLiteral(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re"));
    QList<Word> found;
    for (auto it = word.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        const QPointF topLeft(m.captured(1).toDouble(), m.captured(2).toDouble());
        const QPointF bottomRight(m.captured(3).toDouble(), m.captured(4).toDouble());
        found.append({ m.captured(5), QRectF(topLeft / pointsPerCm, bottomRight / pointsPerCm) });
    }
    return found;
}

QString PdfReadBack::info(const QString &pdf)
{
    return toolOutput(QStringLiteral("pdfinfo"), { pdf });
}

int PdfReadBack::pageCount(const QString &pdf)
{
    static const QRegularExpression pages(QStringLiteral("^Pages:\\s+(\\d+)$"), QRegularExpression::MultilineOption);
    const auto match = pages.match(info(pdf));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}
