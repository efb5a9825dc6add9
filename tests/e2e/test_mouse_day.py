# A day with the mouse alone, between the parts of the program: the pad's
# arrows in a document, the pads opened and closed in any order, zooming in and
# out, the way back when nothing is open, putting the pad away, copying a
# document never saved, a document that cannot be read, and a reopened
# document's format. The real program on its own X server, controls found on
# the accessibility bus, real clicks; files checked after.
import os
import shutil
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402
from checks import check  # noqa: E402
from driver import Screen, document_files, read_document, write_document, write_settings  # noqa: E402

PAD = "文字入力"
MAIN = "Fernwick Nib 2007"


def pad_open(lantern):
    return lantern.find("ABC", window=PAD, timeout=1) is not None


def calculator_open(lantern):
    return lantern.find("＝", window=PAD, timeout=1) is not None


def pad_button_enabled(lantern):
    button = lantern.find(PAD, "push button")
    return button is not None and button.getState().contains(lantern.pyatspi.STATE_ENABLED)


def close_message(lantern):
    close = lantern.find_all(lambda n: n.getRoleName() == "push button" and n.name == "閉じる")
    if close:
        lantern.click(close[-1])


def pressed(lantern, name):
    states = lantern.find(name, "push button").getState()
    return states.contains(lantern.pyatspi.STATE_CHECKED) or states.contains(lantern.pyatspi.STATE_PRESSED)


def close_window_as_the_window_manager_does(lantern, title):
    # Sends the window the WM_DELETE_WINDOW message a window manager sends
    # when its close box is clicked.
    from Xlib import X, display, protocol
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"],
                           env=lantern.env, capture_output=True, text=True).stdout.split()
    if not found:
        return False
    screen = display.Display(lantern.display)
    window = screen.create_resource_object("window", int(found[0]))
    protocols = screen.intern_atom("WM_PROTOCOLS")
    delete = screen.intern_atom("WM_DELETE_WINDOW")
    window.send_event(protocol.event.ClientMessage(window=window, client_type=protocols,
                                                   data=(32, [delete, X.CurrentTime, 0, 0, 0])))
    screen.flush()
    screen.close()
    time.sleep(0.8)
    return True


def the_pad_in_a_document():
    # Its arrows move the caret, しまう puts it away, 変換 with 漢字 off says
    # why and its keys explain themselves; none of it types into the text.
    notice = "いまは漢字に変換できません。先に [漢字] をクリックしてから、かなを入力して [変換] をクリックしてください。"
    line_break_tip = "クリックすると、指定した場所を右端にして折り返し、新しく入力する場所を次の行の左端にします。"
    with Screen(1366, 768) as lantern:
        editor = lantern.open_blank("one")
        for word in ("two", "three"):
            lantern.xdotool("key", "Return")
            lantern.type(word)
        lantern.click_named(PAD, "push button", pause=1.0)
        up = lantern.find("↑", "push button", window=PAD)
        down = lantern.find("↓", "push button", window=PAD)
        check("the pad shows its arrows", up is not None and down is not None)
        lantern.click(up)
        caret = editor.queryText()
        check("↑ moves the caret one line up", 4 <= caret.caretOffset <= 7, caret.caretOffset)
        lantern.click(up)
        check("↑ again reaches the first line", caret.caretOffset <= 3, caret.caretOffset)
        lantern.hold(down, 1.5)
        check("↓ held moves on to the last line", caret.caretOffset >= 8, caret.caretOffset)
        check("the arrows typed nothing", lantern.text_of(editor) == "one\ntwo\nthree", repr(lantern.text_of(editor)))

        lantern.click_named("しまう", "push button", window=PAD, pause=0.8)
        check("しまう puts the pad away", not pad_open(lantern))
        check("and 文字入力 can bring it back", pad_button_enabled(lantern))
        lantern.click_named(PAD, "push button", pause=1.0)
        check("it comes back", pad_open(lantern))

        lantern.click_named("変換", "push button", window=PAD, pause=0.8)
        check("変換 with 漢字 off says why in the information bar", lantern.find(notice, "label", timeout=2) is not None)

        lantern.point_at(lantern.find("改行", "push button", window=PAD), 0.4)
        check("a pad key shows its hint", lantern.find(line_break_tip, "label", timeout=2) is not None)
        lantern.move_away()
        check("and the hint goes when the pointer leaves", lantern.find(line_break_tip, "label", timeout=1) is None)
        lantern.click_named("閉じる", "push button", window=PAD)
        lantern.click_named("保存して閉じる")
        files = document_files()
        check("the document is saved", len(files) == 1, files)
        if files:
            body = read_document(files[0])[2]
            check("no tab reached the file", "\\tab" not in body, body[:300])
            shown = driver.rtfconv("--text", files[0])
            check("the file reads the three lines", shown == "one\ntwo\nthree", shown)


def opening_the_pads_in_any_order():
    sequences = [("文字入力 電卓 電卓", [PAD, "電卓", "電卓"]),
                 ("電卓 文字入力 電卓 電卓", ["電卓", PAD, "電卓", "電卓"])]
    with Screen(1366, 768) as lantern:
        lantern.find("スタート", timeout=20)
        for name, clicks in sequences:
            for button in clicks:
                lantern.click_named(button, "push button", window=MAIN, pause=0.8)
                check(f"{name}: after {button}, 文字入力 can be clicked exactly when the pad is away",
                      pad_button_enabled(lantern) != pad_open(lantern))
            if pad_open(lantern):
                lantern.click_named("閉じる", "push button", window=PAD)
            if calculator_open(lantern):
                lantern.click_named("電卓", "push button", window=MAIN)
            check(f"{name}: with both pads away 文字入力 can be clicked",
                  not pad_open(lantern) and pad_button_enabled(lantern))

        # Closed by the window manager: both pads go, the buttons follow.
        lantern.click_named(PAD, "push button", pause=0.8)
        lantern.click_named("電卓", "push button", window=MAIN, pause=0.8)
        check("both pads show together", pad_open(lantern) and calculator_open(lantern))
        check("the window manager's close reaches the dialog", close_window_as_the_window_manager_does(lantern, PAD))
        check("closed by the window manager, neither pad stays", not pad_open(lantern) and not calculator_open(lantern))
        check("and 文字入力 can be clicked again", pad_button_enabled(lantern))
        check("and 電卓 is no longer pressed", not pressed(lantern, "電卓"))

        # In the recent list too: its keyword field needs the pad.
        lantern.click_named("履歴")
        lantern.click_named(PAD, "push button", pause=0.8)
        check("the pad opens over the recent list", pad_open(lantern))


def smart_pencil_opens_the_pad_beside_the_calculator():
    write_settings(smart_pencil="True")
    with Screen(1366, 768) as lantern:
        editor = lantern.open_blank()
        lantern.click_named("電卓", "push button", window=MAIN, pause=0.8)
        check("the calculator shows alone", calculator_open(lantern) and not pad_open(lantern))
        # Near the top of the text: the calculator stands over its middle.
        x, y, _, _ = lantern.extents(editor)
        lantern.click_at(x + 60, y + 40, pause=1.0)
        check("a click into the text opens the character pad beside it", pad_open(lantern) and calculator_open(lantern))
        check("文字入力 is greyed while the pad shows", not pad_button_enabled(lantern))


def the_way_back_and_a_document_that_cannot_be_read():
    # On a 1024 x 768 screen: the welcome box closed and found again, then a
    # document in its recent list that cannot be opened.
    path = write_document("20250101090000.TXT", "Unreadable", "{\\rtf1 kept words\\par}")
    with Screen(1024, 768) as lantern:
        lantern.find("スタート", timeout=20)
        close = lantern.by_description("クリックすると、[ようこそ] ウィンドウを閉じます。")
        check("the welcome box has its close button", close is not None)
        lantern.click(close)
        back = lantern.find("ドキュメントを選ぶ", "push button", timeout=3)
        check("with nothing open, a labelled button leads back", back is not None)
        if back:
            lantern.click(back)
        check("one click brings the welcome box back", lantern.find("白紙の文書", "table cell", exact=False) is not None)
        lantern.click_named("履歴")
        cell = lantern.find("Unreadable", "table cell")
        check("the recent list shows the document", cell is not None)
        # Between the list and the click the file becomes something that
        # cannot be read as a document.
        os.remove(path)
        os.mkdir(path)
        lantern.click(cell, pause=1.0)
        message = lantern.find("このドキュメントを開けませんでした。\nファイルが読み取れません。\nファイルはそのまま残してあります。",
                               "label", timeout=5)
        check("the user is told plainly that it could not be opened", message is not None)
        close_message(lantern)
        check("no document is open", lantern.editor(timeout=1) is None)
        lantern.click_named("終了")
        check("the program ends", lantern.wait_exit(20) == 0)
    check("nothing was written where the document was", os.path.isdir(path) and not os.listdir(path))
    check("and no other file was made", [f for f in document_files() if os.path.isfile(f)] == [], document_files())
    shutil.rmtree(path, ignore_errors=True)


def zooming_copying_and_reopening():
    # A document never saved, zoomed in and out and copied at 200 %, then a
    # centred, bulleted one saved and reopened.
    with Screen(1366, 768) as lantern:
        lantern.open_blank("original words")
        lantern.set_title("Original")

        def sizes():
            node = lantern.editor()
            page = node.parent
            return tuple(lantern.extents(node)[2:]), tuple(lantern.extents(page)[2:])

        def doubled(small, large):
            # The page is fitted to its view by a fraction: a pixel of rounding.
            return all(abs(b - 2 * a) <= 1 for a, b in zip(small, large))

        first = sizes()
        lantern.click_named("拡大")
        zoomed = sizes()
        check("拡大 doubles the box", doubled(first[0], zoomed[0]), (first, zoomed))
        check("and the page", doubled(first[1], zoomed[1]), (first, zoomed))
        lantern.click_named("縮小")
        check("縮小 brings back exactly the first layout", sizes() == first, (first, sizes()))
        lantern.click_named("拡大")
        lantern.click_named("コピー", pause=1.0)
        check("a copy made at 200 % shows its page and box at 200 % alike", sizes() == zoomed, (zoomed, sizes()))
        files = document_files()
        check("copying a document never saved leaves two files", len(files) == 2, files)
        documents = [read_document(f) for f in files]
        check("titled Original and (コピー)", sorted(d[0] for d in documents) == ["(コピー)", "Original"],
              [d[0] for d in documents])
        check("both hold the words", all("original words" in d[2] for d in documents))
        for path, (doc_title, stamp, _) in zip(files, documents):
            check(f"{doc_title}: its header carries its own save time", driver.named_by_its_time(path, stamp),
                  (stamp, path))
        lantern.click_named("縮小")
        check("and 縮小 acts on the copy", sizes() == first, (first, sizes()))
        lantern.click_named("削除")
        yes = lantern.find("はい", "push button")
        if yes:
            lantern.click(yes)
        left = document_files()
        check("deleting the copy leaves the original", len(left) == 1 and read_document(left[0])[0] == "Original",
              [read_document(f)[0] for f in left])

        lantern.open_blank("Centred")
        lantern.click_named("中央揃え")
        lantern.click_named("行頭に記号")
        lantern.set_title("Format")
        lantern.click_named("保存して閉じる")
        lantern.reopen("Format")
        check("reopened, 中央揃え is lit at once", pressed(lantern, "中央揃え"))
        check("左揃え is not", not pressed(lantern, "左揃え"))
        check("行頭に記号 is lit", pressed(lantern, "行頭に記号"))


def saving_on_a_full_disk():
    not_saved = ("このドキュメントを保存できませんでした。\n書いた文章は画面に残してあります。\n"
                 "ディスクの空きを確かめてから、\nもう一度 [保存して閉じる] をクリックしてください。")
    with Screen(1366, 768, file_size_limit=64) as lantern:
        editor = lantern.open_blank("Words that must not be lost")
        lantern.click_named("保存して閉じる", pause=1.0)
        check("a save that fails says so plainly", lantern.find(not_saved, "label", timeout=5) is not None)
        close_message(lantern)
        editor = lantern.editor(timeout=2)
        check("the document stays on the screen with its words",
              editor is not None and lantern.text_of(editor) == "Words that must not be lost",
              lantern.text_of(editor) if editor else None)
        check("nothing cut was left in the folder", [f for f in document_files() if os.path.getsize(f) > 0] == [],
              document_files())
        lantern.make_room()
        lantern.click_named("保存して閉じる", pause=1.0)
        files = document_files()
        check("with room again the same button saves it", len(files) == 1 and "Words that must not be lost" in
              read_document(files[0])[2], files)


def turning_hints_off_leaves_no_empty_bar():
    with Screen(1366, 768) as lantern:
        lantern.find("スタート", timeout=20)
        lantern.click_named("設定", "push button", window=MAIN, pause=1.0)
        hints = lantern.find("ポイントした場所のヒントを表示する", "check box")
        lantern.point_at(hints, pause=1.0)
        check("a pointed-at control explains itself in the bar", info_bar_showing(lantern))
        lantern.click(hints, pause=1.0)
        lantern.move_away(pause=1.0)
        check("with hints turned off, the bar and its 閉じる go away", not info_bar_showing(lantern))
        lantern.point_at(lantern.find("終了", "push button", window=MAIN), pause=1.0)
        check("and pointing at a button brings back no empty bar", not info_bar_showing(lantern))


def info_bar_showing(lantern):
    return lantern.by_description("クリックすると、説明を閉じます。", timeout=0.5) is not None


if __name__ == "__main__":
    driver.run([the_pad_in_a_document, opening_the_pads_in_any_order, smart_pencil_opens_the_pad_beside_the_calculator,
                zooming_copying_and_reopening, the_way_back_and_a_document_that_cannot_be_read, saving_on_a_full_disk,
                turning_hints_off_leaves_no_empty_bar])
