-- What release 0.3.0 has its database do, word for word, with values in the places of its questions; $ is the document's id. What it
-- looks for when it starts is put into one row.
-- A line is a statement, and a line with ":" the name of those behind it.
:make
CREATE TABLE documents (sequence INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL UNIQUE, register TEXT NOT NULL, kind TEXT NOT NULL, body TEXT NOT NULL, digest TEXT NOT NULL, state TEXT NOT NULL, reason TEXT NOT NULL DEFAULT '', accepted TEXT NOT NULL, start_before TEXT, begun TEXT, settled TEXT, attempts INTEGER NOT NULL DEFAULT 0, drive TEXT NOT NULL DEFAULT '', document INTEGER, number_read INTEGER NOT NULL DEFAULT 1, last_attempt INTEGER, times INTEGER NOT NULL DEFAULT 0, resolved_by TEXT, resolved_note TEXT, anonymised TEXT)
CREATE INDEX documents_unfinished ON documents (state) WHERE state IN ('queued', 'running', 'unknown')
CREATE INDEX documents_by_drive ON documents (drive, last_attempt)
CREATE INDEX documents_by_register ON documents (register, last_attempt)
CREATE INDEX documents_by_number ON documents (drive, document)
CREATE INDEX documents_by_time ON documents (accepted)
CREATE TABLE attempts (sequence INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL, number INTEGER NOT NULL, begun TEXT NOT NULL, ended TEXT, mark_before TEXT NOT NULL, movement TEXT NOT NULL, mark_after TEXT, failure TEXT, warnings TEXT, verdict TEXT, document INTEGER, body TEXT, digest TEXT, UNIQUE (id, number))
CREATE TABLE goods (sequence INTEGER PRIMARY KEY AUTOINCREMENT, mark TEXT NOT NULL, id TEXT NOT NULL)
CREATE INDEX goods_by_mark ON goods (mark)
CREATE INDEX goods_by_id ON goods (id)
CREATE TABLE takeovers (file TEXT PRIMARY KEY, time TEXT NOT NULL)
PRAGMA application_id = 1718766156
PRAGMA user_version = 1
:accept
INSERT INTO documents (id, register, kind, body, digest, state, accepted, start_before) VALUES ('$', 'till1', 'sell', '{"a":1,"b":2}', 'former', 'queued', '2026-01-01T00:00:00.000Z', NULL)
DELETE FROM goods WHERE id = '$'
INSERT INTO goods (mark, id) VALUES ('mark of $', '$')
:begin
INSERT INTO attempts (id, number, begun, mark_before, movement) VALUES ('$', 1, '2026-01-01T00:00:01.000Z', '{"drive":"9999","lastDocument":7}', '{}')
UPDATE documents SET state = 'running', begun = '2026-01-01T00:00:01.000Z', attempts = 1, drive = '9999', document = NULL, last_attempt = last_insert_rowid() WHERE id = '$'
:refuse
UPDATE attempts SET mark_after = coalesce(NULL, mark_after), failure = coalesce('{"text":"Конец бумаги"}', failure), warnings = coalesce(NULL, warnings) WHERE id = '$' AND number = 1
UPDATE documents SET state = 'notIssued', reason = 'refused', settled = '2026-01-01T00:00:02.000Z', document = NULL, number_read = 1, times = 0, resolved_by = '', resolved_note = '' WHERE id = '$'
UPDATE attempts SET ended = '2026-01-01T00:00:02.000Z', verdict = 'notIssued', document = NULL, mark_after = coalesce(NULL, mark_after) WHERE id = '$' AND number = 1
:correct
UPDATE attempts SET body = '{"a":1,"b":2}', digest = 'former' WHERE id = '$' AND digest IS NULL
UPDATE documents SET register = 'till1', kind = 'sell', body = '{"a":2}', digest = 'corrected', state = 'queued', reason = '', start_before = NULL, settled = NULL, resolved_by = NULL, resolved_note = NULL, anonymised = NULL WHERE id = '$'
INSERT INTO attempts (id, number, begun, mark_before, movement) VALUES ('$', 2, '2026-01-01T00:00:03.000Z', '{"drive":"9999","lastDocument":7}', '{}')
UPDATE documents SET state = 'running', begun = '2026-01-01T00:00:03.000Z', attempts = 2, drive = '9999', document = NULL, last_attempt = last_insert_rowid() WHERE id = '$'
:issue
UPDATE documents SET state = 'issued', reason = '', settled = '2026-01-01T00:00:04.000Z', document = 8, number_read = 1, times = 1, resolved_by = '', resolved_note = '' WHERE id = '$'
UPDATE attempts SET ended = '2026-01-01T00:00:04.000Z', verdict = 'issued', document = 8, mark_after = coalesce('{"lastDocument":8}', mark_after) WHERE id = '$' AND number = 2
:expire
UPDATE documents SET state = 'notIssued', reason = 'expired', settled = '2026-01-01T00:00:05.000Z' WHERE id = '$'
:anonymise
UPDATE attempts SET warnings = NULL, body = CASE WHEN body IS NULL THEN NULL ELSE '' END WHERE id IN (SELECT id FROM documents WHERE state IN ('issued', 'notIssued') AND accepted < '2026-01-02T00:00:00.000Z' AND anonymised IS NULL AND kind <> 'review')
UPDATE documents SET body = '', resolved_by = NULL, resolved_note = NULL, anonymised = '2026-01-03T00:00:00.000Z' WHERE state IN ('issued', 'notIssued') AND accepted < '2026-01-02T00:00:00.000Z' AND anonymised IS NULL AND kind <> 'review'
:start
SELECT (SELECT user_version FROM pragma_user_version) = 1 AND (SELECT application_id FROM pragma_application_id) = 1718766156 AND sum(name = 'takeovers') > 0 FROM sqlite_master
:find
SELECT documents.sequence, documents.id, kind, body, register, start_before, digest, state, reason, accepted, begun, settled, drive, document, number_read, times, resolved_by, resolved_note, attempts FROM documents JOIN goods ON goods.id = documents.id WHERE goods.mark = 'mark of $' AND register = 'till1' ORDER BY goods.sequence DESC
SELECT number, begun, ended, mark_before, movement, mark_after, failure, warnings, verdict, document, body, digest FROM attempts WHERE id = '$' ORDER BY number
SELECT documents.sequence, documents.id, kind, body, register, start_before, digest, state, reason, accepted, begun, settled, drive, document, number_read, times, resolved_by, resolved_note, attempts FROM documents WHERE state IN ('running') AND state IN ('queued', 'running', 'unknown') ORDER BY documents.sequence
SELECT documents.sequence, documents.id, kind, body, register, start_before, digest, state, reason, accepted, begun, settled, drive, document, number_read, times, resolved_by, resolved_note, attempts FROM documents WHERE register = 'till1' AND last_attempt > 0 ORDER BY last_attempt DESC LIMIT 1
