-- Tarnwell store, version 1.
-- Dates are milliseconds since the epoch (UTC); ids are UUID text.
-- Migrations after this one may only add tables, nullable columns and indexes.

CREATE TABLE days (
    id          TEXT PRIMARY KEY NOT NULL,
    date        INTEGER NOT NULL,
    created_at  INTEGER
);
CREATE UNIQUE INDEX days_by_date ON days(date);

CREATE TABLE tasks (
    id                      TEXT PRIMARY KEY NOT NULL,
    title                   TEXT NOT NULL,
    notes                   TEXT,
    duration_minutes        INTEGER,
    urgent                  INTEGER NOT NULL DEFAULT 0,
    order_index             INTEGER NOT NULL DEFAULT 0,
    completed               INTEGER NOT NULL DEFAULT 0,
    completed_at            INTEGER,
    archived                INTEGER NOT NULL DEFAULT 0,
    actual_seconds_focused  INTEGER,
    active_started_at       INTEGER,
    actual_edited_manually  INTEGER NOT NULL DEFAULT 0,
    away_seconds_discarded  INTEGER,
    due_date                INTEGER,
    rolled_from_date        INTEGER,
    routine_item_id         TEXT,
    created_at              INTEGER NOT NULL,
    updated_at              INTEGER NOT NULL,
    day_id                  TEXT REFERENCES days(id) ON DELETE CASCADE DEFERRABLE INITIALLY DEFERRED
);
CREATE INDEX tasks_by_day ON tasks(day_id);
CREATE INDEX tasks_by_routine_item ON tasks(routine_item_id) WHERE routine_item_id IS NOT NULL;

CREATE TABLE routines (
    id                 TEXT PRIMARY KEY NOT NULL,
    name               TEXT NOT NULL,
    order_index        INTEGER NOT NULL DEFAULT 0,
    repeat_weekdays    INTEGER NOT NULL DEFAULT 0,
    last_applied_date  INTEGER,
    created_at         INTEGER,
    updated_at         INTEGER
);
CREATE INDEX routines_repeating ON routines(repeat_weekdays) WHERE repeat_weekdays != 0;

CREATE TABLE routine_items (
    id                TEXT PRIMARY KEY NOT NULL,
    title             TEXT NOT NULL,
    notes             TEXT,
    duration_minutes  INTEGER,
    order_index       INTEGER NOT NULL DEFAULT 0,
    routine_id        TEXT REFERENCES routines(id) ON DELETE CASCADE DEFERRABLE INITIALLY DEFERRED
);
CREATE INDEX routine_items_by_routine ON routine_items(routine_id);

CREATE TABLE app_settings (
    id                          TEXT PRIMARY KEY NOT NULL,
    workday_end_minutes         INTEGER NOT NULL DEFAULT -1,
    idle_threshold_minutes      INTEGER NOT NULL DEFAULT 10,
    minimal_idle_mode           INTEGER NOT NULL DEFAULT 0,
    pre_end_warning_minutes     INTEGER NOT NULL DEFAULT 0,
    overtime_preset_minutes     INTEGER NOT NULL DEFAULT 10,
    skip_break_preset_minutes   INTEGER NOT NULL DEFAULT 5,
    notifications_enabled       INTEGER NOT NULL DEFAULT 1,
    sound_enabled               INTEGER NOT NULL DEFAULT 1,
    chime_sound_name            TEXT NOT NULL DEFAULT 'Glass',
    hotkey_toggle_popover       TEXT NOT NULL DEFAULT 'cmd+shift+j',
    hotkey_quick_add            TEXT NOT NULL DEFAULT 'cmd+shift+a',
    menu_bar_max_chars          INTEGER NOT NULL DEFAULT 16,
    sort_mode                   TEXT NOT NULL DEFAULT 'manual',
    theme                       TEXT DEFAULT 'auto',
    language                    TEXT NOT NULL DEFAULT 'system',
    login_item_enabled          INTEGER NOT NULL DEFAULT 0,
    onboarding_completed        INTEGER NOT NULL DEFAULT 0,
    edit_history_enabled        INTEGER NOT NULL DEFAULT 0
);
