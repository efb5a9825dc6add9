#include "documents/DocumentRecord.h"

#include "platform/vb/VbError.h"

namespace {

VbError subscriptOutOfRange()
{
    return VbError(9, QStringLiteral("インデックスが有効範囲にありません。"));
}

template<typename List>
auto &elementAt(List &list, int number)
{
    if (number < 1 || number > list.size())
        throw subscriptOutOfRange();
    return list[number - 1];
}

} // namespace

DocumentItem &DocumentPage::item(int number) { return elementAt(Items, number); }
const DocumentItem &DocumentPage::item(int number) const { return elementAt(Items, number); }

DocumentPage &DocumentRecord::page(int number) { return elementAt(Pages, number); }
const DocumentPage &DocumentRecord::page(int number) const { return elementAt(Pages, number); }
