-- Tarnwell store, version 2: the review of estimates reads completed tasks
-- by the instant they were completed.
CREATE INDEX tasks_by_completed_at ON tasks(completed_at) WHERE completed_at IS NOT NULL;
