-- Tarnwell store, version 4: the account the store syncs with. One row at
-- most. The password is never here: it lives in the desktop's secret service.
-- Times are milliseconds since the epoch (UTC); the error is a kind
-- ("network", "unauthorized", ...), told to the user in their language.
CREATE TABLE sync_account (
    id              INTEGER PRIMARY KEY NOT NULL CHECK (id = 1),
    server_url      TEXT NOT NULL,
    user_name       TEXT NOT NULL,
    collection_url  TEXT NOT NULL DEFAULT '',
    enabled         INTEGER NOT NULL DEFAULT 0,
    last_sync_at    INTEGER,
    last_error      TEXT
);
