"""The wizard, the guide and the author page: what the program says of itself."""
import contextlib
import json
import os

from tavrin import CMD, OPTION, item, wait_for

KEY_F8, KEY_W = 100, 13
ITEMS = [
    item("Google Chrome", KEY_F8, CMD, "launchApp", "com.google.Chrome"),
    item("Bảng công việc", KEY_W, CMD | OPTION, "openURL", "https://example.org/board"),
]

PAGES = ["Chào mừng đến với Tavrin", "Cấp Quyền Trợ Năng macOS", "4 Loại Hành Động Tự Động Hoá",
         "Thiết Lập Chạy Nền & Hoàn Tất"]

AUTHOR, LAST_OF_AUTHOR = "Tác giả & Phát triển ứng dụng Tavrin cho macOS", "Sao chép Số tài khoản"
NOTES = "• Nhanh hơn khi khởi động\n• Sửa lỗi dán văn bản"
REFUSAL = "echo refused"
HALF_WAY = "echo 'progress 427 1000'; exec sleep 1000"
FAILURE = "echo 'broken Không kết nối được tới máy chủ.'"


def walk_through_wizard(window, name):
    """A picture of each of its pages, from the first to the last."""
    for number, title in enumerate(PAGES, 1):
        window.find("heading", title)
        window.shoot(f"wizard-{number}-{name}")
        if number < len(PAGES):
            window.find("push button", "Tiếp tục").press()


def go_back_to_the_first_page(window):
    for title in PAGES[-2::-1]:
        window.find("push button", "Quay lại").press()
        window.find("heading", title)


def wizard(stage):
    with stage.window(ITEMS, is_user_new=True) as window:
        walk_through_wizard(window, "granted")
        for role, name, picture in (("push button", "Quay lại", "back"),
                                    ("check box", "Khởi động cùng máy tính", "switch")):
            # Not the one of that name which is covered.
            window.find("dialog").find(role, name).focus()
            window.shoot(f"wizard-4-focus-on-{picture}")
        go_back_to_the_first_page(window)
        window.resize(640, 480)
        for number, title in enumerate(PAGES, 1):
            window.find("heading", title)
            window.shoot(f"wizard-{number}-granted-640x480")
            # Where not all of it fits.
            window.press("End")
            window.shoot(f"wizard-{number}-granted-640x480-end")
            if number < len(PAGES):
                window.find("push button", "Tiếp tục").press()


def wizard_without_permission(stage):
    """On a server that lets no program press keys, nor us."""
    with stage.window(ITEMS, is_user_new=True) as window:
        walk_through_wizard(window, "missing")
        go_back_to_the_first_page(window)
        window.resize(640, 480)
        walk_through_wizard(window, "missing-640x480")


def is_in_sight(window, role, name):
    def bottom(element):
        _, y, _, height = element.extents
        return y + height
    return any(bottom(element) <= bottom(window.frame) for element in window.tree.search(role, name))


def shoot_pages(window, name, last):
    """The tab from its top, page by page, until the button of this name, its last control, is in sight."""
    window.press("Home")
    number = 1
    picture = window.shoot(f"{name}-{number}")
    while not is_in_sight(window, "push button", last):
        number += 1
        window.press("Next")
        picture = window.shoot(f"{name}-{number}", unlike=picture)


def guide(stage):
    with stage.window(ITEMS) as window:
        window.find("page tab", "Hướng dẫn").press()
        window.find("label", "Hướng Dẫn Sử Dụng Tavrin")
        shoot_pages(window, "guide", "Mở Cài đặt")
        window.press("Tab")
        window.shoot("guide-focused")
        for width, height in ((720, 760), (640, 480)):
            window.resize(width, height)
            shoot_pages(window, f"guide-{width}x{height}", "Mở Cài đặt")


def manifest(version="9.9", notes=NOTES):
    """The command that answers a check with it."""
    text = json.dumps({"version": version, "releaseNotes": notes, "downloadUrl": "https://example.org/Tavrin.zip"},
                      ensure_ascii=False)
    return f"printf 'ok %s\\n%s' {len(text.encode())} '{text}'"


def checks(program):
    """How many have been asked for."""
    try:
        return os.path.getsize(f"{os.path.dirname(program)}/tavrin-fetch.checks")
    except FileNotFoundError:
        return 0


@contextlib.contextmanager
def author_window(stage, *answers, download=HALF_WAY):
    """The author page, where checks are answered by these commands, one after another, and then never. Returns
    when the first, that at launch, is under way."""
    cases = "\n".join(f"{number}) {answer};;" for number, answer in enumerate(answers, 1))
    script = f"""#!/bin/sh
[ "$1" = download ] && {{ {download}; exit; }}
printf x >> "$0.checks"
case $(wc -c < "$0.checks") in
{cases}
*) exec sleep 1000;;
esac
"""
    with stage.program_with_helper("tavrin-fetch", script) as program, stage.window(ITEMS, program) as window:
        wait_for(lambda: checks(program), "the check at launch")
        window.find("page tab", "Tác giả").press()
        window.find("label", AUTHOR)
        window.resize(720, 760)
        yield window


def shoot_author(window, name, is_checking=False):
    """The page from its top, and to its end."""
    shoot = window.shoot_moving if is_checking else window.shoot
    window.press("Home")
    wait_for(lambda: is_in_sight(window, "label", AUTHOR), "the page's top")
    shoot(f"author-{name}")
    window.press("End")
    wait_for(lambda: is_in_sight(window, "push button", LAST_OF_AUTHOR), "the page's end")
    shoot(f"author-{name}-end")


def shoot_check(window, name):
    """A check that is never answered; the wheel that turns meanwhile stops the usual wait for a picture at rest."""
    window.find("push button", "Kiểm tra cập nhật").press()
    window.find("label", "Đang kiểm tra bản cập nhật...")
    shoot_author(window, name, is_checking=True)
    window.find("label", "Đang kiểm tra bản cập nhật...")


def author_without_an_update(stage):
    with author_window(stage, REFUSAL, manifest(version="1.0")) as window:
        shoot_author(window, "idle")
        window.find("push button", "Kiểm tra cập nhật").press()
        window.find("label", "Bạn đang dùng phiên bản mới nhất (v1.0.7).")
        shoot_author(window, "latest")
        window.resize(640, 480)
        shoot_pages(window, "author-640x480", LAST_OF_AUTHOR)
        window.resize(720, 760)
        shoot_check(window, "checking")
        window.find("push button", LAST_OF_AUTHOR).press()
        window.shoot_moving("author-copied")


def author_with_an_update(stage):
    for name, notes in (("update", NOTES), ("update-without-notes", "")):
        with author_window(stage, manifest(notes=notes)) as window:
            window.find("push button", "Cập nhật ngay")
            shoot_author(window, name)
            window.find("push button", "Cập nhật ngay").press()
            window.find("label", "42%")
            shoot_author(window, f"{name}-running")
    with author_window(stage, manifest(), download=FAILURE) as window:
        window.find("push button", "Cập nhật ngay").press()
        window.find("label", "Lỗi tải bản cập nhật: Không kết nối được tới máy chủ.")
        shoot_author(window, "update-failed")
        window.find("push button", "Ẩn thông báo này").press()
        window.find("push button", "Kiểm tra cập nhật")
        shoot_author(window, "idle-with-notes")
        shoot_check(window, "checking-with-notes")
