#include "platform/agent/CharacterStage.h"

#include <QSize>

CharacterStage *CharacterStage::instance()
{
    static CharacterStage stage;
    return &stage;
}

void CharacterStage::setPerch(const QRect &perch)
{
    if (m_hosted && perch == m_perch)
        return;
    m_hosted = true;
    m_perch = perch;
    emit perchChanged();
}

QRect CharacterStage::placeIn(QSize picture) const
{
    if (m_perch.isEmpty() || picture.isEmpty())
        return {};
    const QSize size = picture.scaled(m_perch.size(), Qt::KeepAspectRatio);
    return QRect(m_perch.right() + 1 - size.width(), m_perch.bottom() + 1 - size.height(), size.width(), size.height());
}
