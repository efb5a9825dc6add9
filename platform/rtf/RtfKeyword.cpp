#include "platform/rtf/RtfKeyword.h"

#include <string_view>
#include <unordered_map>

const RtfKeyword *RtfKeyword::find(QByteArrayView name)
{
    using K = RtfKeyword;
    static const std::unordered_map<std::string_view, RtfKeyword> table = {
        // clang-format off
        {"rtf", {K::Rtf}}, {"urtf", {K::Rtf}}, {"ansi", {K::Ansi}}, {"mac", {K::Mac}},
        {"pc", {K::Pc}}, {"pca", {K::Pca}}, {"ansicpg", {K::AnsiCodePage}}, {"deff", {K::DefaultFont}},
        {"fonttbl", {K::FontTable}}, {"colortbl", {K::ColorTable}}, {"pn", {K::ListLevel}},
        // Destinations whose contents are not document text.
        {"info", {K::SkipDestination}}, {"stylesheet", {K::SkipDestination}},
        {"pict", {K::SkipDestination}}, {"object", {K::SkipDestination}},
        {"nonshppict", {K::SkipDestination}}, {"shp", {K::SkipDestination}},
        {"header", {K::SkipDestination}}, {"headerl", {K::SkipDestination}},
        {"headerr", {K::SkipDestination}}, {"headerf", {K::SkipDestination}},
        {"footer", {K::SkipDestination}}, {"footerl", {K::SkipDestination}},
        {"footerr", {K::SkipDestination}}, {"footerf", {K::SkipDestination}},
        {"footnote", {K::SkipDestination}}, {"annotation", {K::SkipDestination}},
        {"listtable", {K::SkipDestination}}, {"listoverridetable", {K::SkipDestination}},
        {"revtbl", {K::SkipDestination}}, {"rsidtbl", {K::SkipDestination}},
        {"filetbl", {K::SkipDestination}}, {"fldinst", {K::SkipDestination}},
        {"pntext", {K::ListText}}, {"listtext", {K::ListText}},
        {"pntxta", {K::SkipDestination}}, {"pntxtb", {K::SkipDestination}},
        {"xe", {K::SkipDestination}}, {"tc", {K::SkipDestination}}, {"do", {K::SkipDestination}},
        {"ftnsep", {K::SkipDestination}}, {"ftnsepc", {K::SkipDestination}},
        {"aftnsep", {K::SkipDestination}}, {"aftnsepc", {K::SkipDestination}},
        {"template", {K::SkipDestination}}, {"private", {K::SkipDestination}},
        {"f", {K::Font}}, {"fcharset", {K::Charset}}, {"cpg", {K::CodePage}},
        {"red", {K::Red}}, {"green", {K::Green}}, {"blue", {K::Blue}},
        {"plain", {K::Plain}}, {"fs", {K::FontSize}}, {"b", {K::Bold}}, {"i", {K::Italic}},
        {"ul", {K::Underline}}, {"uld", {K::Underline}}, {"uldb", {K::Underline}},
        {"ulw", {K::Underline}}, {"uldash", {K::Underline}}, {"ulth", {K::Underline}},
        {"ulwave", {K::Underline}}, {"ulnone", {K::UnderlineNone}}, {"cf", {K::Color}},
        {"pard", {K::Pard}}, {"ql", {K::Left}}, {"qc", {K::Center}}, {"qr", {K::Right}},
        {"qj", {K::Justify}}, {"li", {K::LeftIndent}}, {"fi", {K::FirstIndent}},
        {"ls", {K::ListOverride}}, {"pnlvlblt", {K::ListBullet}}, {"pnlvlbody", {K::ListBody}},
        {"pnlvlcont", {K::ListContinue}}, {"pnfs", {K::ListFontSize}},
        {"par", {K::Par}},
        {"cell", {K::Cell}}, {"nestcell", {K::Cell}}, {"row", {K::Row}},
        {"u", {K::Unicode}}, {"uc", {K::UnicodeSkip}}, {"bin", {K::Binary}},
        {"line", {K::Character, 0x2028}}, {"tab", {K::Character, u'\t'}},
        {"emdash", {K::Character, 0x2014}}, {"endash", {K::Character, 0x2013}},
        {"bullet", {K::Character, 0x2022}}, {"lquote", {K::Character, 0x2018}},
        {"rquote", {K::Character, 0x2019}}, {"ldblquote", {K::Character, 0x201C}},
        {"rdblquote", {K::Character, 0x201D}}, {"emspace", {K::Character, 0x2003}},
        {"enspace", {K::Character, 0x2002}}, {"qmspace", {K::Character, 0x2005}},
    };
    // clang-format on
    const auto found = table.find(std::string_view(name.data(), static_cast<size_t>(name.size())));
    return found == table.end() ? nullptr : &found->second;
}
