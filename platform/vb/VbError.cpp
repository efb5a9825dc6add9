#include "platform/vb/VbError.h"

VbError::VbError(int number, const QString &description)
    : std::runtime_error(description.toStdString())
    , m_number(number)
    , m_description(description)
{
}

VbError VbError::invalidArgument() { return VbError(5, QStringLiteral("プロシージャの呼び出し、または引数が不正です。")); }
VbError VbError::overflow() { return VbError(6, QStringLiteral("オーバーフローしました。")); }
VbError VbError::divisionByZero() { return VbError(11, QStringLiteral("0 で除算しました。")); }
VbError VbError::typeMismatch() { return VbError(13, QStringLiteral("型が一致しません。")); }
