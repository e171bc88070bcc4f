#!/usr/bin/python3
"""A CalDAV server without the sync-collection report, for tests.

Sits in front of a real server (argv[1], e.g. http://127.0.0.1:5232) on a
free port of 127.0.0.1, which it prints as its first line. Every request is
passed on, except a sync-collection REPORT: that is refused the ways servers
without it refuse it, in turn (403 with the DAV:supported-report
precondition, 501, 405), and told on stdout as "refused <status>". The
collection's sync-token property and the report's entry in
DAV:supported-report-set are taken out of PROPFIND answers, so the server
does not advertise what it refuses.
"""
import http.client
import http.server
import re
import sys
import threading
import urllib.parse

UPSTREAM = urllib.parse.urlsplit(sys.argv[1])
HOP = {"connection", "keep-alive", "transfer-encoding", "content-length", "proxy-connection", "server", "date"}
REFUSALS = [
    (403, b'<?xml version="1.0" encoding="utf-8"?>\n<D:error xmlns:D="DAV:"><D:supported-report/></D:error>'),
    (501, b"Not Implemented"),
    (405, b"Method Not Allowed"),
]
lock = threading.Lock()
refused = 0


def advertised_less(body):
    body = re.sub(rb"<([\w-]+:)?sync-token\s*/>|<([\w-]+:)?sync-token[^>]*>.*?</([\w-]+:)?sync-token>", b"", body,
                  flags=re.S)
    return re.sub(rb"<([\w-]+:)?supported-report>\s*<([\w-]+:)?report>\s*<([\w-]+:)?sync-collection\s*/>"
                  rb"\s*</([\w-]+:)?report>\s*</([\w-]+:)?supported-report>", b"", body, flags=re.S)


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *args):
        pass

    def reply(self, status, headers, body):
        self.send_response(status)
        for name, value in headers:
            if name.lower() not in HOP:
                self.send_header(name, value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def forward(self):
        global refused
        body = self.rfile.read(int(self.headers.get("Content-Length") or 0))
        if self.command == "REPORT" and b"sync-collection" in body:
            with lock:
                status, text = REFUSALS[refused % len(REFUSALS)]
                refused += 1
            print("refused", status, flush=True)
            self.reply(status, [("Content-Type", "application/xml; charset=utf-8")], text)
            return
        upstream = http.client.HTTPConnection(UPSTREAM.hostname, UPSTREAM.port, timeout=120)
        headers = {k: v for k, v in self.headers.items() if k.lower() not in HOP}
        upstream.request(self.command, self.path, body=body, headers=headers)
        answer = upstream.getresponse()
        data = answer.read()
        if self.command == "PROPFIND":
            data = advertised_less(data)
        self.reply(answer.status, answer.getheaders(), data)
        upstream.close()

    def __getattr__(self, name):
        if name.startswith("do_"):
            return self.forward
        raise AttributeError(name)


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
print(server.server_address[1], flush=True)
server.serve_forever()
