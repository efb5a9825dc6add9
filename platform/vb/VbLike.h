#pragma once

#include <QString>

// The runtime's Like operator with binary (case-sensitive) comparison:
// "?" any one character, "*" any run of characters, "#" one digit,
// "[abc]" / "[a-z]" one of a list, "[!abc]" one not in it.
class VbLike
{
public:
    static bool match(const QString &text, const QString &pattern);
};
