"""The maker's update server: https with an authority of the test's own, reached as a proxy under any name."""
import json
import os
import socket
import ssl
import subprocess
import threading

from tavrin import RUNTIME

PIECE = 64 * 1024


def openssl(*arguments):
    subprocess.run(("openssl", *arguments), check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


class Authority:
    """Vouches for any host; `certificate` is what the program has to trust."""

    def __init__(self):
        self.certificate, self.key = f"{RUNTIME}/authority.pem", f"{RUNTIME}/authority.key"
        openssl("req", "-x509", *self.new_key(self.key), "-subj", "/CN=Tavrin test authority", "-out", self.certificate)

    @staticmethod
    def new_key(path):
        return "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-keyout", path

    def context(self, host):
        """What a server of this name identifies itself with."""
        certificate, key = f"{RUNTIME}/{host}.pem", f"{RUNTIME}/{host}.key"
        openssl("req", "-x509", *self.new_key(key), "-subj", f"/CN={host}", "-addext", f"subjectAltName=DNS:{host}",
                "-addext", "basicConstraints=critical,CA:FALSE", "-CA", self.certificate, "-CAkey", self.key,
                "-out", certificate)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, key)
        return context


class UpdateServer:
    """Has one manifest and one archive. The archive's second half waits until it is released."""

    def __init__(self, version, archive, status="200 OK", breaks_off=False):
        self.version, self.archive, self.status, self.breaks_off = version, archive, status, breaks_off
        self.asked, self.second_half = [], threading.Event()
        self.authority, self.contexts = Authority(), {}
        self.listener = socket.create_server(("127.0.0.1", 0))
        threading.Thread(target=self.listen, daemon=True).start()

    def environment(self):
        """For a program that is to find this server, and nobody else, behind every name."""
        address = f"http://127.0.0.1:{self.listener.getsockname()[1]}"
        return {"http_proxy": address, "https_proxy": address, "no_proxy": None,
                "TAVRIN_TEST_AUTHORITY": self.authority.certificate}

    def listen(self):
        while True:
            connection, _ = self.listener.accept()
            threading.Thread(target=self.serve, args=(connection,), daemon=True).start()

    def serve(self, connection):
        try:
            host = self.read_head(connection).split()[1].rpartition(":")[0]
            if host not in self.contexts:
                self.contexts[host] = self.authority.context(host)
            connection.sendall(b"HTTP/1.1 200 Connection established\r\n\r\n")
            with self.contexts[host].wrap_socket(connection, server_side=True) as secure:
                self.answer(secure, host)
        except OSError:
            # The program has gone.
            connection.close()

    def answer(self, secure, host):
        path = self.read_head(secure).split()[1].partition("?")[0]
        self.asked.append(path)
        if path == "/version.json":
            self.send(secure, json.dumps({
                "version": self.version, "releaseNotes": "Nhanh hơn", "zipUrl": f"https://{host}/Tavrin.app.zip",
            }).encode())
            return
        half = len(self.archive) // 2
        self.send(secure, self.archive[:half], len(self.archive), self.status)
        self.second_half.wait()
        if not self.breaks_off:
            for start in range(half, len(self.archive), PIECE):
                secure.sendall(self.archive[start:start + PIECE])

    @staticmethod
    def send(secure, body, length=None, status="200 OK"):
        head = f"HTTP/1.1 {status}\r\nContent-Length: {length or len(body)}\r\nConnection: close\r\n\r\n"
        secure.sendall(head.encode() + body)

    @staticmethod
    def read_head(connection):
        received = b""
        while b"\r\n\r\n" not in received:
            piece = connection.recv(4096)
            if not piece:
                raise ConnectionError("no request")
            received += piece
        return received.decode()


def bundle(folder, program=None):
    """Installs the built program as a bundle, or the bundle with another program in it; its path."""
    path = f"{folder}/Tavrin.app"
    subprocess.run(("cmake", "--install", os.environ["TAVRIN_BUILD"], "--prefix", path),
                   check=True, stdout=subprocess.DEVNULL)
    if program:
        subprocess.run(("cp", program, f"{path}/bin/Tavrin"), check=True)
    return path
