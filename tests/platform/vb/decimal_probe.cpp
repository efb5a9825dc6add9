// Reads one decimal operation a line from standard input and prints its result,
// so that a script can check Decimal against exact answers:
//   add|sub|mul|div A B   ->  the result with every digit of its scale
//   compare A B           ->  <, = or >
//   parse TEXT            ->  the number the text reads as
//   display A             ->  the display format "#,0.##"
//   currency A            ->  the currency value, four decimals
//   whole N               ->  the decimal made from a whole number
// A failure prints "error N" with the run-time error's number.
#include "platform/vb/Decimal.h"
#include "platform/vb/VbError.h"

#include <QStringList>

#include <iostream>
#include <string>

static QString evaluate(const QStringList &words)
{
    const QString &operation = words.value(0);
    if (operation == u"whole")
        return Decimal(words.value(1).toLongLong()).toString();
    const Decimal a = Decimal::fromText(words.value(1));
    if (operation == u"parse")
        return a.toString();
    if (operation == u"display")
        return a.toDisplayText();
    if (operation == u"currency")
        return a.toCurrency().toString();
    const Decimal b = Decimal::fromText(words.value(2));
    if (operation == u"compare")
        return a < b ? QStringLiteral("<") : a == b ? QStringLiteral("=") : QStringLiteral(">");
    if (operation == u"add")
        return (a + b).toString();
    if (operation == u"sub")
        return (a - b).toString();
    if (operation == u"mul")
        return (a * b).toString();
    if (operation == u"div")
        return (a / b).toString();
    return QStringLiteral("unknown operation");
}

int main()
{
    std::string line;
    while (std::getline(std::cin, line)) {
        const QStringList words = QString::fromStdString(line).split(u' ', Qt::SkipEmptyParts);
        QString result;
        try {
            result = evaluate(words);
        } catch (const VbError &error) {
            result = QStringLiteral("error %1").arg(error.number());
        }
        std::cout << result.toStdString() << '\n';
    }
    return 0;
}
