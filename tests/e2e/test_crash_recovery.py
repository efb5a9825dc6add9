# Writing survives a crash: the program is killed (SIGKILL) a few seconds
# after the user stopped typing, into a new document and into a reopened one;
# started again, the welcome box offers the text back, one click opens it as
# the document it was, and saving it leaves nothing more to offer.
import glob
import os
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import driver  # noqa: E402
from checks import check  # noqa: E402
from driver import JOURNAL, Screen, document_files, read_document, write_document  # noqa: E402

OFFER = "その文章を開く"
# 120 characters, as a user types them.
WRITING = ("Dear grandchild, the plum tree by the gate is in flower again. "
           "Come and see it on Sunday; I will bake rice cakes, 12345.")
assert len(WRITING) == 120


def killed_after_writing(lantern, editor, title=None):
    # Types into the document, waits three seconds, and kills the program.
    lantern.append(editor, WRITING)
    if title is not None:
        lantern.set_title(title)
    time.sleep(3)
    lantern.kill()


def a_new_document_killed():
    with Screen(1366, 768) as lantern:
        lantern.click(lantern.find("白紙の文書", "table cell", exact=False, timeout=20))
        editor = lantern.editor()
        if not check("a blank document opens", editor is not None):
            return
        killed_after_writing(lantern, editor, title="Plum")
    check("the killed program saved no document", document_files() == [], document_files())

    with Screen(1366, 768) as lantern:
        button = lantern.find(OFFER, "push button")
        if not check("started again, the welcome box offers the writing back", button is not None):
            return
        check("the offer names the document",
              lantern.find("前回、保存されないまま終わった文章があります。\n「Plum」", "label") is not None)
        lantern.click(button, pause=1.0)
        editor = lantern.editor()
        check("one click opens every character that was typed",
              editor is not None and lantern.text_of(editor) == WRITING, editor and lantern.text_of(editor))
        title = lantern.find("タイトル", "text")
        check("with its title", title is not None and lantern.text_of(title) == "Plum")
        lantern.click_named("保存して閉じる", pause=1.0)
        files = document_files()
        check("saving it makes it a document of its own",
              len(files) == 1 and read_document(files[0])[0] == "Plum" and WRITING in read_document(files[0])[2], files)
        check("and the journal lets it go", glob.glob(os.path.join(JOURNAL, "*")) == [])

    with Screen(1366, 768) as lantern:
        lantern.find("白紙の文書", "table cell", exact=False, timeout=20)
        check("when nothing was lost, nothing is offered", lantern.find(OFFER, "push button", timeout=3) is None)


def a_reopened_document_killed():
    path = write_document("20260102030405.TXT", "Letter", "Hello.")
    with open(path, "rb") as f:
        before = f.read()
    with Screen(1920, 1080) as lantern:
        lantern.click_named("履歴")
        lantern.click_named("Letter", "table cell", exact=False, pause=1.0)
        editor = lantern.editor()
        if not check("the saved document opens", editor is not None):
            return
        killed_after_writing(lantern, editor)
    with open(path, "rb") as f:
        check("the killed program left the file as it was", f.read() == before)

    with Screen(1920, 1080) as lantern:
        button = lantern.find(OFFER, "push button")
        if not check("the welcome box offers the writing back", button is not None):
            return
        lantern.click(button, pause=1.0)
        editor = lantern.editor()
        check("it opens with the old text and every character typed after it",
              editor is not None and lantern.text_of(editor) == "Hello." + WRITING, editor and lantern.text_of(editor))
        lantern.click_named("保存して閉じる", pause=1.0)
        check("saved into the file it came from", document_files() == [path], document_files())
        title, _, body = read_document(path)
        check("with its title and all the writing", title == "Letter" and "Hello." + WRITING in body, body)


if __name__ == "__main__":
    driver.run([a_new_document_killed, a_reopened_document_killed])
