-- Tarnwell store, version 2: the review of estimates reads completed tasks
-- by the instant they were completed. The index covers every figure the
-- review needs, so a period is read from the index alone, however the
-- table's rows lie.
CREATE INDEX tasks_by_completed_at ON tasks(completed_at, completed, duration_minutes, actual_seconds_focused, away_seconds_discarded) WHERE completed_at IS NOT NULL;
