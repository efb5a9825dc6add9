#!/usr/bin/python3
"""Writes SKIN/KEYS.INI, the key table installed with the program: what each
key of the input pads types ("Pad,column,row=text") and, for each hiragana
key, the romaji that make the input method compose the same kana
("Romaji,column,row=letters"). Texts use the key-sending notation, so "+",
"^", "~" and braces are written "{+}", "{^}", "{~}", "{{}", "{}}".

Run it after changing a layout below: /usr/bin/python3 scripts/make-keys-ini.py
"""
import os

HIRAGANA = [  # one column per line, rows 1 to 5; "" leaves a cell empty
    "あいうえお", "かきくけこ", "さしすせそ", "たちつてと", "なにぬねの",
    "はひふへほ", "まみむめも", ["や", "", "ゆ", "", "よ"], "らりるれろ",
    ["わ", "を", "ん", "ゎ", ""],
    "がぎぐげご", "ざじずぜぞ", "だぢづでど", "ばびぶべぼ", "ぱぴぷぺぽ",
    "ぁぃぅぇぉ", ["ゃ", "ゅ", "ょ", "っ", ""], "、。「」・", "ー～！？…",
    ["（", "）", "『", "』", "※"],
]

ROMAJI = {
    "あ": "a", "い": "i", "う": "u", "え": "e", "お": "o",
    "や": "ya", "ゆ": "yu", "よ": "yo", "わ": "wa", "を": "wo", "ん": "nn",
    "ゎ": "xwa", "ぁ": "xa", "ぃ": "xi", "ぅ": "xu", "ぇ": "xe", "ぉ": "xo",
    "ゃ": "xya", "ゅ": "xyu", "ょ": "xyo", "っ": "xtu",
    "、": ",", "。": ".", "「": "[", "」": "]", "・": "/",
    "ー": "-", "～": "{~}", "！": "!", "？": "?", "…": "z.",
    "（": "(", "）": ")",
}
CONSONANTS = {  # first kana of a line: the letters that start each of its five
    "か": ["ka", "ki", "ku", "ke", "ko"], "さ": ["sa", "si", "su", "se", "so"],
    "た": ["ta", "ti", "tu", "te", "to"], "な": ["na", "ni", "nu", "ne", "no"],
    "は": ["ha", "hi", "hu", "he", "ho"], "ま": ["ma", "mi", "mu", "me", "mo"],
    "ら": ["ra", "ri", "ru", "re", "ro"], "が": ["ga", "gi", "gu", "ge", "go"],
    "ざ": ["za", "zi", "zu", "ze", "zo"], "だ": ["da", "di", "du", "de", "do"],
    "ば": ["ba", "bi", "bu", "be", "bo"], "ぱ": ["pa", "pi", "pu", "pe", "po"],
}
for line in HIRAGANA:
    if isinstance(line, str) and line[0] in CONSONANTS:
        for kana, letters in zip(line, CONSONANTS[line[0]]):
            ROMAJI[kana] = letters


def katakana(text):
    return "".join(chr(ord(c) + 0x60) if "ぁ" <= c <= "ゖ" else c for c in text)


KATAKANA = [[katakana(c) for c in column] for column in HIRAGANA]
KATAKANA[9][4] = "ヶ"
KATAKANA[15] = ["ァ", "ィ", "ゥ", "ェ", "ォ"]
KATAKANA[16] = ["ャ", "ュ", "ョ", "ッ", "ヴ"]
KATAKANA[7][1] = "ヵ"

# Alphabet pad: column 16 is a gap between the letters and the digits.
ALPHA = {}
for row, letters in enumerate(["ABCDEFGHIJKLM", "NOPQRSTUVWXYZ", "abcdefghijklm", "nopqrstuvwxyz",
                               "@.-_/:,!?'&#$*="], start=1):
    for column, c in enumerate(letters, start=1):
        ALPHA[(column, row)] = c
for row, digits in enumerate(["789", "456", "123", "0"], start=1):
    for column, c in enumerate(digits, start=17):
        ALPHA[(column, row)] = c

SYMBOL1 = ("、。，．・：；？！゛゜´｀¨＾￣＿ヽヾゝ"
           "ゞ〃仝々〆〇ー―‐／＼～∥｜…‥‘’“”"
           "（）〔〕［］｛｝〈〉《》「」『』【】＋－±"
           "×÷＝≠＜＞≦≧∞∴♂♀°′″℃￥＄￠"
           "％＃＆＊＠§☆★○●◎◇◆□■△▲▽▼※")
SYMBOL2 = ("①②③④⑤⑥⑦⑧⑨⑩⑪⑫⑬⑭⑮⑯⑰⑱⑲⑳"
           "ⅠⅡⅢⅣⅤⅥⅦⅧⅨⅩ㍉㌔㌢㍍㌘㌧㌃㌶㍑㍗"
           "㌍㌦㌣㌫㍊㌻㎜㎝㎞㎎㎏㏄㎡㍻〝〟№㏍℡㊤"
           "㊥㊦㊧㊨㈱㈲㈹㍾㍽㍼≒≡∫∮∑√⊥∠∟⊿"
           "∵∩∪→←↑↓〒♪♭♯†‡¶◯〓∈∋⊆⊇")
NUMBER = [["7", "8", "9", "{BACKSPACE}"], ["4", "5", "6", "-"], ["1", "2", "3", "{+}"],
          ["0", "00", ".", "="], ["/", "*", ",", "~"]]


def grid(characters):
    assert len(characters) == 100, len(characters)
    return {(i % 20 + 1, i // 20 + 1): c for i, c in enumerate(characters)}


def columns(table):
    cells = {}
    for column, kana in enumerate(table, start=1):
        for row, c in enumerate(kana, start=1):
            if c:
                cells[(column, row)] = c
    return cells


def main():
    lines = ["; The input pads' key table, installed with the program.",
             "; Made by scripts/make-keys-ini.py: change it there.",
             "; A user's own [Key Settings] replace this table as a whole.",
             "[Key Settings]"]

    def add(pad, cells):
        for (column, row), text in sorted(cells.items(), key=lambda item: (item[0][1], item[0][0])):
            lines.append(f"{pad},{column},{row}={text}")

    add("Number", {(c, r): t for r, keys in enumerate(NUMBER, start=1) for c, t in enumerate(keys, start=1)})
    add("Alpha", ALPHA)
    hiragana = columns(HIRAGANA)
    add("Hiragana", hiragana)
    add("Katakana", columns(KATAKANA))
    add("Symbol 1", grid(SYMBOL1))
    add("Symbol 2", grid(SYMBOL2))
    add("Romaji", {cell: ROMAJI[c] for cell, c in hiragana.items() if c in ROMAJI})
    root = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    os.makedirs(os.path.join(root, "SKIN"), exist_ok=True)
    with open(os.path.join(root, "SKIN", "KEYS.INI"), "w", encoding="utf-8") as out:
        out.write("\n".join(lines) + "\n")


main()
