-- The glossary: OBD II names of engine components beside their older names. The rows come
-- from Terms.tsv beside this file.
CREATE TABLE Terms (
    component TEXT NOT NULL,
    obd2 TEXT NOT NULL,
    obd1 TEXT NOT NULL
);
