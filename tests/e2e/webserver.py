#!/usr/bin/env python3
"""Draws a chart through a real web server: lighttpd with the demo's configuration, dispatcher, form and page script.

    webserver.py SOURCE_DIR QBCHART

Posts the fields of the demo's form as a browser would, and checks the page, the picture, and that nothing but pictures
can be fetched. The server listens on the loopback address only and is stopped at the end.
"""
import html.parser
import os
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import urllib.error
import urllib.parse
import urllib.request


class FormFields(html.parser.HTMLParser):
    """Collects what a browser would post of an untouched form."""

    def __init__(self):
        super().__init__()
        self.fields, self.select, self.option = {}, None, None

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        if tag == "input" and (attrs.get("type") != "checkbox" or "checked" in attrs):
            self.fields[attrs["name"]] = attrs.get("value", "on")
        elif tag == "select":
            self.select = attrs["name"]
        elif tag == "option":
            self.option = attrs

    def handle_data(self, data):
        if self.option is None:
            return
        if "selected" in self.option or self.select not in self.fields:
            self.fields[self.select] = self.option.get("value", data)
        self.option = None


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def wait_for(port):
    for _ in range(100):
        try:
            socket.create_connection(("127.0.0.1", port), timeout=1).close()
            return
        except OSError:
            time.sleep(0.05)
    sys.exit("the web server does not answer")


def lay_out(source, package):
    os.makedirs(package)
    for name in ("cgi", "form.html"):
        path = os.path.join(source, "demo", name)
        copy = shutil.copytree if os.path.isdir(path) else shutil.copy
        copy(path, os.path.join(package, name))
    os.makedirs(os.path.join(package, "out", "gifs"))
    for name in os.listdir(os.path.join(source, "demo", "reports")):
        shutil.copy(os.path.join(source, "demo", "reports", name), os.path.join(package, "out"))


def expect(condition, what):
    if not condition:
        sys.exit("failed: " + what)


def status_of(url, data=None):
    try:
        with urllib.request.urlopen(url, data, timeout=10) as answer:
            return answer.status
    except urllib.error.HTTPError as error:
        return error.code


def check(site, source):
    form = FormFields()
    with open(os.path.join(source, "demo", "form.html"), encoding="utf-8") as page:
        form.feed(page.read())
    body = urllib.parse.urlencode(form.fields).encode()
    with urllib.request.urlopen(site + "/cgi/dispatch.cgi", body, timeout=10) as answer:
        kind, page = answer.headers["Content-Type"], answer.read().decode()
    expect(kind == "text/html", "the page's type is " + str(kind))
    picture = re.search(r'<img src="(/gifs/[A-Za-z0-9]+\.gif)"', page)
    expect(picture, "no picture in the page:\n" + page)
    with urllib.request.urlopen(site + picture.group(1), timeout=10) as answer:
        gif = answer.read()
    expect(gif[:6] == b"GIF89a" and gif[-1:] == b";", "the picture is no GIF")
    expect(int.from_bytes(gif[6:8], "little") == 600, "the picture is not as wide as the form says")

    with urllib.request.urlopen(site + "/cgi/dispatch.cgi", b"nameBase=..%2Fx&chartType=bar", timeout=10) as answer:
        page = answer.read().decode()
    expect("Form Error: invalid name '../x'" in page, "a foreign name is not refused:\n" + page)
    for path in ("/gifs/serial.num", "/gifs/0.ref", "/out/climate.txt", "/cgi/qbchartpage.cgi"):
        expect(status_of(site + path) == 403, path + " can be fetched")
    expect(status_of(site + "/form.html") == 200, "the form cannot be fetched")


def main():
    source, qbchart = sys.argv[1:3]
    with tempfile.TemporaryDirectory() as root:
        package = os.path.join(root, "demo")
        lay_out(source, package)
        # The server starts scripts with an environment of its own, so the program lies where the dispatcher expects it.
        os.makedirs(os.path.join(root, "build", "release"))
        os.symlink(qbchart, os.path.join(root, "build", "release", "qbchart"))
        port = free_port()
        with open(os.path.join(source, "demo", "lighttpd.conf"), encoding="utf-8") as original:
            text = re.sub(r"(?m)^server\.port = .*$", f"server.port = {port}", original.read())
        conf = os.path.join(package, "lighttpd.conf")
        with open(conf, "w", encoding="utf-8") as copy:
            copy.write(text)
        with subprocess.Popen(["/usr/sbin/lighttpd", "-D", "-f", conf], env=dict(os.environ, DEMO=package)) as server:
            try:
                wait_for(port)
                check(f"http://127.0.0.1:{port}", source)
            finally:
                server.terminate()
    print("the chart came through the web server")


main()
