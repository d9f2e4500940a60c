"""A maker of releases, and an HTTPS server for them that somebody vouches for."""
import base64
import http.server
import os
import ssl
import subprocess
import tempfile
import threading
import unittest
from pathlib import Path

SPARKLE = 'xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"'
ENDING = "_amd64.deb"


def openssl(*arguments, **options):
    return subprocess.run(["openssl", *map(str, arguments)], check=True, capture_output=True, **options).stdout


class Maker:
    """Whoever publishes releases: an Ed25519 key."""

    def __init__(self, folder):
        self.folder, self.private = folder, folder / f"maker-{os.urandom(4).hex()}.pem"
        openssl("genpkey", "-algorithm", "ed25519", "-out", self.private)
        # The raw key is the end of its description in DER.
        described = openssl("pkey", "-in", self.private, "-pubout", "-outform", "DER")
        self.key = base64.b64encode(described[-32:]).decode()

    def sign(self, content):
        file = self.folder / "to-sign"
        file.write_bytes(content)
        return base64.b64encode(openssl("pkeyutl", "-sign", "-inkey", self.private, "-rawin", "-in", file)).decode()


class Authority:
    """Vouches for the server on this machine."""

    def __init__(self, folder):
        self.certificate, self.key = folder / "server.pem", folder / "server.key"
        openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", self.key, "-out", self.certificate,
                "-days", "2", "-subj", "/CN=Test server", "-addext", "subjectAltName=IP:127.0.0.1")


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.server.requests.append((self.path, dict(self.headers)))
        answer = self.server.paths.get(self.path.split("?")[0])
        try:
            if answer is None:
                self.send_error(404)
            elif callable(answer):
                answer(self)
            else:
                stream([answer], len(answer))(self)
        except OSError:
            pass  # The client may hang up whenever it likes.

    def log_message(self, *_):
        pass


class Server(http.server.ThreadingHTTPServer):
    """Answers each path as it is told: bytes, or a function of the request."""
    daemon_threads = True

    def __init__(self, authority=None, host="127.0.0.1"):
        super().__init__((host, 0), Handler)
        self.paths, self.requests, self.ending = {}, [], threading.Event()
        self.context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER) if authority else None
        if authority:
            self.context.load_cert_chain(authority.certificate, authority.key)
        self.base = f"{'https' if authority else 'http'}://{host}:{self.server_port}"
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def get_request(self):
        client, address = super().get_request()
        # The handshake happens in the thread that serves the connection, where it may fail.
        return (self.context.wrap_socket(client, server_side=True, do_handshake_on_connect=False) if self.context
                else client), address

    def handle_error(self, *_):
        pass

    def stop(self):
        self.ending.set()
        self.shutdown()
        self.server_close()


def stream(pieces, length=None):
    """An answer in pieces; it tells its length where one is given."""
    def answer(request):
        request.send_response(200)
        if length is not None:
            request.send_header("Content-Length", str(length))
        request.end_headers()
        for piece in pieces:
            request.wfile.write(piece)
    return answer


def stalling(piece=b"", length=None):
    """An answer of which nothing comes after this piece."""
    def answer(request):
        stream([piece], length)(request)
        request.server.ending.wait(60)
    return answer


def redirect(to):
    def answer(request):
        request.send_response(302)
        request.send_header("Location", to)
        request.end_headers()
    return answer


class ServedTest(unittest.TestCase):
    """A folder and a maker of releases for each class, and for each test a server that its authority vouches for."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        cls.authority, cls.maker = Authority(cls.folder), Maker(cls.folder)

    def setUp(self):
        self.server = Server(self.authority)
        self.addCleanup(self.server.stop)


def debian_package(version, size=0):
    """The bytes of a Debian package of that version, with a file of so many bytes in it."""
    with tempfile.TemporaryDirectory() as folder:
        tree, package = Path(folder) / "tree", Path(folder) / "built.deb"
        (tree / "DEBIAN").mkdir(parents=True)
        (tree / "DEBIAN/control").write_text(f"Package: kelpa\nVersion: {version}\nArchitecture: all\n"
                                             "Maintainer: nobody <nobody@kelpa.example>\nDescription: none\n")
        (tree / "content").write_bytes(bytes(size))
        subprocess.run(["dpkg-deb", "-Znone", "--build", tree, package], check=True, capture_output=True)
        return package.read_bytes()


def item(version, url="", length=0, signature="", name="", more="", attributes=""):
    """One release of a feed."""
    shown = f"<sparkle:shortVersionString>{name}</sparkle:shortVersionString>" if name else ""
    seal = f'sparkle:edSignature="{signature}"' if signature else ""
    return (f"<item><title>Release</title><sparkle:version>{version}</sparkle:version>{shown}{more}"
            f'<enclosure url="{url}" length="{length}" type="application/x-debian-package" {seal} {attributes}/></item>')


def feed(*items):
    return f'<?xml version="1.0"?><rss version="2.0" {SPARKLE}><channel><title>Kelpa</title>{"".join(items)}' \
           "</channel></rss>".encode()
