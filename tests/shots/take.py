#!/usr/bin/python3
"""Takes a picture of every view and state of the program in one look and at one scale; runs on a private desktop
and ends with an error where a state is not reached.

usage: take.py light|dark SCALE FOLDER [--without-xtest]
"""
import argparse
import contextlib
import json
import os
import subprocess
import sys

from stage import ROOT, Stage
from tavrin import CMD, CONTROL, OPTION, SHIFT, item
from welcome import author_with_an_update, author_without_an_update, guide, wizard, wizard_without_permission

KEY_F8, KEY_W, KEY_K, KEY_I, KEY_L, KEY_T, KEY_R = 100, 13, 40, 34, 37, 17, 15

ITEMS = [
    item("Google Chrome", KEY_F8, CMD, "launchApp", "com.google.Chrome"),
    item("Bảng công việc", KEY_W, CMD | OPTION, "openURL", "https://example.org/board"),
    item("Chữ ký email", KEY_K, CONTROL | OPTION, "quickText",
         json.dumps({"text": "Trân trọng, {date}", "mode": "paste", "restoreClipboard": True})),
    item("Xem IP mạng (Thông báo)", KEY_I, CMD | OPTION, "shellScript",
         'IP=$(curl -sf --max-time 2 https://ifconfig.me/ip)\nnotify-send "Tavrin Network" "Địa chỉ IP máy: $IP"'),
    item("Khoá màn hình", KEY_L, CMD | CONTROL, "systemAction", "lockScreen", enabled=False),
]
HARD_ITEMS = [
    item("Một cái tên rất dài mà không hàng nào trong cửa sổ này có thể chứa được đến tận chữ cuối cùng của nó", KEY_T,
         CMD | OPTION | CONTROL | SHIFT, "openURL", "https://example.org/" + "duong-dan-rat-dai/" * 12),
    item("اختصار من اليمين 👩🏽‍💻🇻🇳", KEY_R, CMD, "shellScript", "echo 'مرحبا' 🎉"),
    item("Tie\u0302\u0301ng Vie\u0302\u0323t to\u0302\u0309 ho\u031b\u0323p", KEY_I, CMD | SHIFT, "launchApp", "khong-co-that"),
] + [item(f"Phím tắt số {number}", number, OPTION, "openURL", f"https://example.org/{number}") for number in range(18)]

EDITED = {"Google Chrome": "application-unknown", "Bảng công việc": "address", "Chữ ký email": "text",
          "Xem IP mạng (Thông báo)": "script", "Khoá màn hình": "system"}

MANIFEST = json.dumps({"version": "1.0.8", "releaseNotes": "Sửa lỗi", "downloadUrl": "https://example.org/Tavrin.zip"})


def shortcuts(stage):
    with stage.window(ITEMS) as window:
        window.shoot("list-focused")
        window.press("ctrl+f")
        window.find("text", "Tìm kiếm", "focused")
        usual = window.shoot("list")
        window.point_at(window.row("Bảng công việc"))
        window.shoot("list-hovered", unlike=usual)
        window.point_at()
        window.type("khong co gi nhu the")
        window.find("label", "Không tìm thấy phím tắt phù hợp")
        window.shoot("list-filtered-to-nothing")
        window.press("Escape")
        window.row("Google Chrome")
        window.press("Tab")
        window.find("combo box", state="focused")
        window.press("space")
        window.find("list item", "Chạy Script / Lệnh")
        window.shoot("list-filter-open")
        window.press("Escape")
        window.find("push button", "Tạm dừng tất cả").press()
        window.find("push button", "Kích hoạt lại phím tắt")
        window.shoot("list-paused")
        window.find("push button", "Kích hoạt lại phím tắt").press()
        window.find("push button", "Tạm dừng tất cả")


def shortcuts_that_are_hard_to_show(stage):
    with stage.window(HARD_ITEMS) as window:
        window.shoot("list-long")


def smallest_window(stage):
    with stage.window(ITEMS) as window:
        window.resize(640, 480)
        window.shoot("list-640x480")


def delete_alert(stage):
    with stage.window(ITEMS) as window:
        window.press("Down", "Delete")
        window.find("alert", "Xác nhận xóa phím tắt")
        window.shoot("delete-alert")
        window.resize(640, 480)
        window.shoot("delete-alert-640x480")


def no_shortcuts(stage):
    with stage.window([]) as window:
        window.find("label", "Chưa có phím tắt nào được tạo")
        window.shoot("empty")


def edit(window, name):
    """Opens the editor for the shortcut of this name."""
    window.row(name).find("push button", "Chỉnh sửa").press()
    window.find("dialog", "Chỉnh Sửa Phím Tắt")


def new_shortcut(stage):
    with stage.window(ITEMS) as window:
        window.press("ctrl+n")
        window.find("dialog", "Thêm Phím Tắt Mới")
        window.shoot("editor-application")
        window.press("Return")
        window.find("alert", "Vui lòng nhấn nút 'Ghi phím' để gán tổ hợp phím tắt.")
        window.shoot("editor-error")
        window.find("push button", "Ghi phím").press()
        window.find("label", "Nhấn tổ hợp phím bất kỳ...")
        window.shoot("editor-recording")
        window.press("super+F3")
        window.find("push button", "⌘ Command F3")
        window.shoot("editor-notice")
        window.resize(640, 480)
        window.shoot("editor-notice-640x480")


def known_shortcuts(stage):
    with stage.window(ITEMS) as window:
        for name, picture in EDITED.items():
            edit(window, name)
            window.shoot(f"editor-{picture}")
            # The last of the fields, back over the two buttons.
            window.press("shift+Tab", "shift+Tab", "shift+Tab")
            window.shoot(f"editor-{picture}-end")
            if stage.scale == 1:
                window.resize(720, 760)
                window.shoot(f"editor-{picture}-720x760")
                window.resize(720, 540)
            window.press("Escape")
            window.tree.wait_gone("dialog")


def presets(stage):
    with stage.window(ITEMS) as window:
        for name, menu, preset in (("Chữ ký email", "Mẫu văn bản có sẵn...", "Dấu thời gian (Timestamp)"),
                                   ("Xem IP mạng (Thông báo)", "Mẫu script có sẵn...", "Xóa DNS Cache (Flush DNS)")):
            edit(window, name)
            window.find("combo box", menu).press()
            window.find("list item", preset)
            window.shoot(f"editor-presets-{EDITED[name]}")
            window.press("Escape", "Escape")
            window.tree.wait_gone("dialog")


def choose_application(window):
    window.press("ctrl+n")
    window.find("dialog", "Thêm Phím Tắt Mới")
    window.find("push button", "Bấm vào đây để chọn Ứng dụng từ danh sách...").press()
    window.find("dialog", "Chọn Ứng Dụng")


def application_picker(stage):
    with stage.window(ITEMS) as window:
        choose_application(window)
        window.find("list", "Ứng dụng")
        window.shoot("picker-list")
        window.press("Down", "Down")
        window.shoot("picker-list-current")
        window.type("khong co gi nhu the")
        window.find("label", "Không tìm thấy ứng dụng phù hợp")
        window.shoot("picker-empty")
        window.press("ctrl+a", "BackSpace")
        window.find("list", "Ứng dụng")
        window.resize(640, 480)
        window.shoot("picker-list-640x480")
        window.press("Return")
        window.find("push button", "Đổi Ứng Dụng...")
        window.resize(720, 540)
        window.shoot("editor-application-chosen")


def busy_application_picker(stage):
    with stage.many_applications(), stage.window(ITEMS) as window:
        choose_application(window)
        window.find("label", "Đang quét ứng dụng trên máy...")
        window.shoot("picker-loading")


def update_banner(stage):
    answer = f"#!/bin/sh\nprintf 'ok %s\\n%s' {len(MANIFEST.encode())} '{MANIFEST}'\n"
    with stage.program_with_helper("tavrin-fetch", answer) as program, stage.window(ITEMS, program) as window:
        window.find("push button", "Cập nhật ngay")
        window.shoot("update-banner")
        window.resize(640, 480)
        window.shoot("update-banner-640x480")


def missing_permission(stage):
    """On a server that lets no program press keys, nor us."""
    with stage.window(ITEMS) as window:
        window.find("push button", "Quyền Trợ năng: Chưa cấp (Bấm để cấp)")
        window.shoot("permission-missing")
        window.row("Chữ ký email").find("push button", "Chỉnh sửa").press()
        window.find("dialog", "Chỉnh Sửa Phím Tắt")
        window.resize(720, 760)
        window.find("push button", "Cấp quyền ngay").focus()
        window.shoot("editor-permission-missing")


VIEWS = [shortcuts, shortcuts_that_are_hard_to_show, smallest_window, delete_alert, no_shortcuts, update_banner,
         new_shortcut, known_shortcuts, presets, application_picker, busy_application_picker, wizard, guide,
         author_without_an_update, author_with_an_update]
VIEWS_WITHOUT_XTEST = [missing_permission, wizard_without_permission]


@contextlib.contextmanager
def desktop_look(look):
    portal = subprocess.Popen((f"{ROOT}/tests/support/settings_portal.py", look), stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, text=True)
    if portal.stdout.readline() != "READY\n":
        raise AssertionError("the portal did not start")
    try:
        yield
    finally:
        portal.stdin.close()
        portal.wait(10)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("look", choices=("light", "dark"))
    parser.add_argument("scale", type=int)
    parser.add_argument("folder")
    parser.add_argument("--without-xtest", action="store_true")
    options = parser.parse_args()
    stage = Stage(options.look, options.scale, options.folder)
    failed = []
    with desktop_look(options.look):
        for view in VIEWS_WITHOUT_XTEST if options.without_xtest else VIEWS:
            try:
                view(stage)
            except (AssertionError, subprocess.CalledProcessError) as error:
                failed.append(f"{view.__name__}, {options.look}, {options.scale}00 %: {error}")
    print(*stage.taken, sep="\n", flush=True)
    print(*failed, sep="\n", file=sys.stderr)
    os._exit(1 if failed else 0)


if __name__ == "__main__":
    main()
