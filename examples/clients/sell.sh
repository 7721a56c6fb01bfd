#!/usr/bin/env bash
# Sells over frserver, to copy from: curl alone. Exit status 0 issued, 1 not issued or refused, 3 a person is needed.
#   FRSERVER_TOKEN=... sell.sh http://127.0.0.1:8403 till1 shop:2025-03-01:42 receipt.json
# The id is kept where the sale itself is kept, before the first attempt: after any failure it is the same again.
set -euo pipefail

[ $# -eq 4 ] || { echo "usage: sell.sh URL REGISTER ID FILE" >&2; exit 2; }
url=${1%/} register=$2 id=$3 file=$4
patience=${PATIENCE:-300}
headers=(-H "Content-Type: application/json" -H "Idempotency-Key: $id" -H "Prefer: wait=30")
[ -z "${FRSERVER_TOKEN:-}" ] || headers+=(-H "Authorization: Bearer $FRSERVER_TOKEN")
answer=$(mktemp)
trap 'rm -f "$answer"' EXIT

# The service writes the members of an object in the order of their names: that of the document stands behind its attempts'.
state() { grep -o '[,{]"state":"[a-zA-Z]*"' "$answer" | tail -n 1 | cut -d'"' -f4; }

end=$((SECONDS + patience))
while [ "$SECONDS" -lt "$end" ]; do
  said=$(curl --silent --max-time 45 --output "$answer" --write-out '%{http_code} %{content_type}' "${headers[@]}" \
    --data-binary "@$file" "$url/v1/registers/$register/documents") || said=000
  case "$said $(state || true)" in
    20[01]\ *\ issued) cat "$answer"; exit 0 ;;
    202\ *\ queued | 202\ *\ running) continue ;;
    409\ *\ unknown) cat "$answer" >&2; exit 3 ;;
    429\ * | 408\ *) ;;
    409\ *\ notIssued | 4??\ application/problem+json*) cat "$answer" >&2; exit 1 ;;
  esac
  # Any 5xx, time-out or answer that is not ours, such as a page of a proxy: the same id again.
  sleep 2
done
echo "no answer within $patience seconds: ask again with the same id" >&2
exit 3
