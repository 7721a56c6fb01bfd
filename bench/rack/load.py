"""Documents that come as fast as the registers can make them, so that each register has one more waiting."""

import http.client
import json
import threading
import time
import uuid


class Poster(threading.Thread):
    """One client of one service with a connection that is kept: so many documents ahead, and then one each interval, to the targets
    in turn."""

    def __init__(self, service, targets, interval, ahead, body):
        super().__init__(daemon=True)
        self._service = service
        self._targets = targets
        self._interval = interval
        self._ahead = ahead
        self._body = json.dumps(body).encode()
        self._is_over = threading.Event()
        self.times = []
        self.failure = None

    def run(self):
        try:
            connection = http.client.HTTPConnection("127.0.0.1", self._service.port, timeout=60)
            begun, count = time.monotonic(), 0
            while not self._is_over.is_set():
                due = begun + max(0, count - self._ahead) * self._interval
                if self._is_over.wait(max(0, due - time.monotonic())):
                    break
                self._post(connection, self._targets[count % len(self._targets)])
                count += 1
            connection.close()
        except (OSError, http.client.HTTPException, RuntimeError) as failure:
            self.failure = failure

    def _post(self, connection, target):
        asked = time.monotonic()
        connection.request("POST", f"/v1/{target}/documents", self._body, {
            "Content-Type": "application/json", "Idempotency-Key": f"load:{uuid.uuid4()}", "Prefer": "wait=0"})
        with connection.getresponse() as response:
            text = response.read()
            if response.status not in (201, 202):
                raise RuntimeError(f"{target}: {response.status} {text.decode()}")
        self.times.append((asked, (time.monotonic() - asked) * 1000))

    def stop(self):
        self._is_over.set()
        self.join()
        if self.failure:
            raise self.failure

    def times_since(self, moment):
        return [took for asked, took in self.times if asked >= moment]
