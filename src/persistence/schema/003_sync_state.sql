-- Tarnwell store, version 3: what two-way sync with a CalDAV collection
-- remembers between passes. Nothing here is needed while sync is off.

-- The collection synced with, and the token of its last change the store has
-- taken in completely (NULL: list everything by etag next time).
CREATE TABLE sync_collections (
    url         TEXT PRIMARY KEY NOT NULL,
    sync_token  TEXT
);

-- One row per task that is on the server. `base` is the iCalendar text both
-- sides agreed on last (the merge's common ancestor, and what is written over
-- so that other clients' properties survive); `etag` is NULL when the server
-- lost the resource and it is to be written again. `fingerprint` is the task's
-- synced columns as they were then, so that a pass finds what changed here
-- without reading every task.
CREATE TABLE sync_items (
    task_id      TEXT NOT NULL UNIQUE REFERENCES tasks(id) DEFERRABLE INITIALLY DEFERRED,
    href         TEXT NOT NULL UNIQUE,
    etag         TEXT,
    base         TEXT NOT NULL,
    fingerprint  TEXT
);

-- Resources whose task was deleted here: deleted on the server by the next pass.
CREATE TABLE sync_tombstones (
    href  TEXT PRIMARY KEY NOT NULL,
    etag  TEXT NOT NULL
);

-- The body stays on one line: the migrator ends a statement at a semicolon that ends a line.
CREATE TRIGGER sync_items_to_tombstones AFTER DELETE ON tasks BEGIN INSERT OR REPLACE INTO sync_tombstones(href, etag) SELECT href, etag FROM sync_items WHERE task_id = OLD.id AND etag IS NOT NULL; DELETE FROM sync_items WHERE task_id = OLD.id; END;
