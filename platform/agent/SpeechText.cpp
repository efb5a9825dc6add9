#include "platform/agent/SpeechText.h"

#include <QRegularExpression>

namespace {

const QRegularExpression &pauseTag()
{
    static const QRegularExpression tag(QStringLiteral(R"(\\Pau=(\d{1,6})\\)"),
                                        QRegularExpression::CaseInsensitiveOption);
    return tag;
}

} // namespace

QList<SpeechText::Piece> SpeechText::split(const QString &tagged)
{
    QList<Piece> pieces;
    auto addText = [&](const QString &text) {
        if (!text.trimmed().isEmpty())
            pieces.append({text.trimmed(), 0});
    };
    qsizetype pos = 0;
    for (const QRegularExpressionMatch &match : pauseTag().globalMatch(tagged)) {
        addText(tagged.mid(pos, match.capturedStart() - pos));
        pieces.append({QString(), match.captured(1).toInt()});
        pos = match.capturedEnd();
    }
    addText(tagged.mid(pos));
    return pieces;
}

QString SpeechText::displayText(const QString &tagged)
{
    QString text = tagged;
    text.replace(pauseTag(), QString());
    return text.simplified();
}
