#include "platform/ime/InputMethodStatus.h"
#include "platform/RuntimeLog.h"

#include <QMetaEnum>

InputMethodStatus &InputMethodStatus::instance()
{
    static InputMethodStatus *status = new InputMethodStatus;
    return *status;
}

InputMethodStatus::InputMethodStatus()
    : m_framework(InputMethodFramework::forThisDesktop())
{
    connect(m_framework.get(), &InputMethodFramework::modeChanged, this, &InputMethodStatus::modeChanged);
    RuntimeLog::note("InputMethodStatus", QStringLiteral("input method framework: %1").arg(QString::fromLatin1(QMetaEnum::fromType<InputMethodFramework::Kind>().valueToKey(m_framework->kind()))));
}

QString InputMethodStatus::modeSymbol() const
{
    return m_framework->modeKnown() ? InputMethodFramework::symbolFor(mode()) : QString();
}
