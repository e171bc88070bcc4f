-- Tarnwell store: searching past tasks by title, and a chime and volume per
-- timer event.
--
-- Titles are found through a trigram full-text index, so any part of a title
-- of three or more characters is looked up in the index instead of reading
-- every task. The index is fed from task_titles, whose integer key stays put
-- through VACUUM (the tasks table's own rowid may not); triggers keep both in
-- step with every insert, title change and delete, whoever makes it.
CREATE TABLE task_titles (
    id       INTEGER PRIMARY KEY,
    task_id  TEXT NOT NULL UNIQUE,
    title    TEXT NOT NULL
);
CREATE VIRTUAL TABLE task_title_search USING fts5(title, content='task_titles', content_rowid='id', tokenize='trigram');
CREATE TRIGGER task_titles_added AFTER INSERT ON task_titles BEGIN INSERT INTO task_title_search(rowid, title) VALUES (new.id, new.title); END;
CREATE TRIGGER task_titles_removed AFTER DELETE ON task_titles BEGIN INSERT INTO task_title_search(task_title_search, rowid, title) VALUES ('delete', old.id, old.title); END;
CREATE TRIGGER task_titles_changed AFTER UPDATE OF title ON task_titles BEGIN INSERT INTO task_title_search(task_title_search, rowid, title) VALUES ('delete', old.id, old.title); INSERT INTO task_title_search(rowid, title) VALUES (new.id, new.title); END;
CREATE TRIGGER tasks_title_added AFTER INSERT ON tasks BEGIN INSERT INTO task_titles(task_id, title) VALUES (new.id, new.title); END;
CREATE TRIGGER tasks_title_removed AFTER DELETE ON tasks BEGIN DELETE FROM task_titles WHERE task_id = old.id; END;
CREATE TRIGGER tasks_title_changed AFTER UPDATE OF title ON tasks WHEN old.title IS NOT new.title BEGIN UPDATE task_titles SET title = new.title WHERE task_id = new.id; END;
INSERT INTO task_titles(task_id, title) SELECT id, title FROM tasks ORDER BY created_at;

-- The chime of each timer event (none: the time-up chime, chime_sound_name)
-- and the volume of all of them in percent (none: 100).
ALTER TABLE app_settings ADD COLUMN warning_chime_name TEXT;
ALTER TABLE app_settings ADD COLUMN completion_chime_name TEXT;
ALTER TABLE app_settings ADD COLUMN chime_volume_percent INTEGER;
