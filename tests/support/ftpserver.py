#!/usr/bin/python3
"""A real FTP server for the voicemail tests: serves --root on 127.0.0.1, prints
{"port": N} once it listens, then serves until stopped.

--tls DIR       explicit FTP over TLS (AUTH TLS required), self-signed certificate written to DIR
--readonly DIR  (relative to root, repeatable) the user may not write files in that folder
--throttle N    plain FTP only: send at most N bytes per second (to catch a transfer in flight)
"""
import argparse
import json
import os
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer


def make_certificate(folder):
    from OpenSSL import crypto
    key = crypto.PKey()
    key.generate_key(crypto.TYPE_RSA, 2048)
    cert = crypto.X509()
    cert.get_subject().CN = "fritz.box"
    cert.set_serial_number(1)
    cert.gmtime_adj_notBefore(0)
    cert.gmtime_adj_notAfter(3600)
    cert.set_issuer(cert.get_subject())
    cert.set_pubkey(key)
    cert.sign(key, "sha256")
    path = os.path.join(folder, "ftp-test.pem")
    with open(path, "wb") as f:
        f.write(crypto.dump_privatekey(crypto.FILETYPE_PEM, key))
        f.write(crypto.dump_certificate(crypto.FILETYPE_PEM, cert))
    return path


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--root", required=True)
    parser.add_argument("--user", default="ftpuser")
    parser.add_argument("--password", required=True)
    parser.add_argument("--tls")
    parser.add_argument("--readonly", action="append", default=[])
    parser.add_argument("--throttle", type=int)
    args = parser.parse_args()

    authorizer = DummyAuthorizer()
    root = os.path.realpath(args.root)
    authorizer.add_user(args.user, args.password, root, perm="elradfmw")
    for folder in args.readonly:
        authorizer.override_perm(args.user, os.path.join(root, folder), "elr", recursive=False)

    handler = FTPHandler
    if args.tls:
        from pyftpdlib.handlers import TLS_DTPHandler, TLS_FTPHandler

        class DataChannel(TLS_DTPHandler):
            # curl starts the data channel's TLS handshake before it sends the transfer
            # command; pyftpdlib would close a channel that is readable that early.
            def readable(self):
                return True if self._ssl_accepting else super().readable()

        handler = TLS_FTPHandler
        handler.dtp_handler = DataChannel
        handler.certfile = make_certificate(args.tls)
        handler.tls_control_required = True
        handler.tls_data_required = True
        # pyftpdlib's data channel fails the TLS 1.3 handshake; routers speak 1.2 anyway.
        from OpenSSL import SSL
        handler.ssl_options = (handler.ssl_options or 0) | SSL.OP_NO_TLSv1_3
    elif args.throttle:
        from pyftpdlib.handlers import ThrottledDTPHandler
        ThrottledDTPHandler.read_limit = args.throttle
        ThrottledDTPHandler.write_limit = args.throttle
        handler.dtp_handler = ThrottledDTPHandler
    handler.authorizer = authorizer
    handler.banner = "FRITZ!Box FTP server ready."

    server = FTPServer(("127.0.0.1", 0), handler)
    print(json.dumps({"port": server.address[1]}), flush=True)
    # Quiet: the tests read only the first line.
    sys.stderr = open(os.devnull, "w")
    server.serve_forever(handle_exit=True)


if __name__ == "__main__":
    main()
