"""A maker of releases with its own certificate authority, an HTTPS server for them, and kelpa-update itself."""
import base64
import http.server
import os
import select
import socket
import ssl
import subprocess
import tempfile
import threading
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
HELPER = os.environ.get("KELPA_UPDATE", str(ROOT / "build/dev/kelpa-update"))
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
        self.certificate, key, request = folder / "authority.pem", folder / "authority.key", folder / "server.csr"
        self.server = folder / "server.pem"
        openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out", self.certificate,
                "-days", "2", "-subj", "/CN=Test authority")
        openssl("req", "-newkey", "rsa:2048", "-nodes", "-keyout", folder / "server.key", "-out", request,
                "-subj", "/CN=Test server")
        names = folder / "names"
        names.write_text("subjectAltName=IP:127.0.0.1\n")
        openssl("x509", "-req", "-in", request, "-CA", self.certificate, "-CAkey", key, "-CAcreateserial",
                "-days", "2", "-extfile", names, "-out", self.server)
        self.server.write_text(self.server.read_text() + (folder / "server.key").read_text())


class Server:
    """Answers each path as it is told: bytes, or a function of the request."""

    def __init__(self, authority=None, host="127.0.0.1"):
        self.paths, self.requests, self.ending = {}, [], threading.Event()
        outer = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                outer.requests.append((self.path, dict(self.headers)))
                answer = outer.paths.get(self.path.split("?")[0])
                try:
                    if callable(answer):
                        answer(self)
                    elif answer is None:
                        self.send_error(404)
                    else:
                        self.send_response(200)
                        self.send_header("Content-Length", str(len(answer)))
                        self.end_headers()
                        self.wfile.write(answer)
                except OSError:
                    pass  # The client may hang up whenever it likes.

            def log_message(self, *_):
                pass

        class Quiet(http.server.ThreadingHTTPServer):
            daemon_threads = True

            def get_request(self):
                client, address = super().get_request()
                # The handshake happens in the thread that serves the connection, where it may fail.
                return (context.wrap_socket(client, server_side=True, do_handshake_on_connect=False), address
                        ) if authority else (client, address)

            def handle_error(self, *_):
                pass

        if authority:
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(authority.server)
        self.http = Quiet((host, 0), Handler)
        self.base = f"{'https' if authority else 'http'}://{host}:{self.http.server_port}"
        threading.Thread(target=self.http.serve_forever, daemon=True).start()

    def stop(self):
        self.ending.set()
        self.http.shutdown()
        self.http.server_close()


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


def redirect(to):
    def answer(request):
        request.send_response(302)
        request.send_header("Location", to)
        request.end_headers()
    return answer


def item(version, url="", length=0, signature="", name="", more="", attributes=""):
    """One release of a feed."""
    shown = f"<sparkle:shortVersionString>{name}</sparkle:shortVersionString>" if name else ""
    seal = f'sparkle:edSignature="{signature}"' if signature else ""
    return (f"<item><title>Release</title><sparkle:version>{version}</sparkle:version>{shown}{more}"
            f'<enclosure url="{url}" length="{length}" type="application/x-debian-package" {seal} {attributes}/></item>')


def feed(*items):
    return f'<?xml version="1.0"?><rss version="2.0" {SPARKLE}><channel><title>Kelpa</title>{"".join(items)}' \
           "</channel></rss>".encode()


class Helper:
    """kelpa-update, and the program's end of the connection to it."""

    def __init__(self, certificates, **environment):
        ours, theirs = socket.socketpair()
        clean = {name: value for name, value in os.environ.items() if not name.lower().endswith("_proxy")}
        self.process = subprocess.Popen([HELPER], preexec_fn=lambda: os.dup2(theirs.fileno(), 3), pass_fds=(3,),
                                        env={**clean, "SSL_CERT_FILE": str(certificates), **environment})
        theirs.close()
        self.connection, self.input = ours, ours.makefile("r", encoding="utf-8", newline="\n")

    def tell(self, *fields):
        self.connection.sendall(("\t".join(map(str, fields)) + "\n").encode())

    def hears(self, seconds=20):
        """The next message, as the list of its fields; an empty one when the helper is gone."""
        self.connection.settimeout(seconds)
        line = self.input.readline()
        return line.rstrip("\n").split("\t") if line else []

    def hears_within(self, seconds):
        """The next message; None when there is none so soon."""
        return self.hears() if select.select([self.connection], [], [], seconds)[0] else None

    def outcome(self, seconds=20):
        """The next message that is no progress."""
        while (message := self.hears(seconds)) and message[0] == "progress":
            pass
        return message

    def memory(self):
        """The most it ever had in memory, in MB; 0 when it is gone."""
        status = Path(f"/proc/{self.process.pid}/status").read_text()
        if "VmHWM:" not in status:
            return 0
        return int(status.split("VmHWM:")[1].split()[0]) / 1024

    def close(self):
        self.input.close()
        self.connection.close()
        return self.process.wait(10)
