-- The schema whose rows hold their data themselves, with cases as in definitions.sql.
CREATE TABLE SAT_GEOMETRIES (GUID TEXT, PARENT_CLASS TEXT, PARENT_GUID TEXT, "INDEX" INTEGER, XFORM TEXT,
    CATEGORY TEXT, DATA TEXT);
CREATE INDEX SAT_GEOMETRIES_PARENT ON SAT_GEOMETRIES (PARENT_GUID, "INDEX");
CREATE TABLE MESHES (KEY TEXT, NAME TEXT, PARENT_CLASS TEXT, PARENT_ID TEXT, XFORM TEXT, DATA BLOB, MTL BLOB);

INSERT INTO SAT_GEOMETRIES (PARENT_CLASS, PARENT_GUID, "INDEX", DATA) VALUES
    ('Pier', 'p', 0, '400 0 1 0'), ('Pier', 'p', 0, 'a later row'), ('Pier', 'p', 1, 'next'),
    ('Deck', 'p', 0, 'of another class'), ('Pier', 'q', 0, 'of another parent'),
    ('Pier', 'p', -7, 'below zero'), ('Pier', 'p', 4294967289, 'not -7'),
    ('Pier', 'null', 0, NULL), ('Pier', 'empty', 0, ''), ('', '', 0, 'of no parent'),
    ('Träger', '😀"''\;', 2147483647, 'Bögen € 😀');
INSERT INTO MESHES (rowid, DATA, MTL) VALUES
    (1, x'00FF00', x'AA'), (5, NULL, x'BB'), (6, x'', NULL), (7, CAST('v 0 0 0' AS BLOB), NULL),
    (-9223372036854775808, x'09', NULL);

CREATE TABLE SAT_CASES (DATA_GUID TEXT, PARENT_CLASS TEXT, PARENT_GUID TEXT, "INDEX" INTEGER, RESULT);
INSERT INTO SAT_CASES VALUES
    ('plain', 'Pier', 'p', 0, '400 0 1 0'), ('', 'Pier', 'p', 1, 'next'),
    ('', 'Deck', 'p', 0, 'of another class'),
    ('', 'Pier', 'q', 0, 'of another parent'),
    ('', 'Pier', 'p', -7, 'below zero'),
    ('', 'Pier', 'null', 0, x''), ('', 'Pier', 'empty', 0, x''), ('', '', '', 0, 'of no parent'),
    ('', 'Träger', '😀"''\;', 2147483647, x'42C3B667656E20E282AC20EDA0BDEDB880'),
    ('', 'Träger', '😁"''\;', 2147483647, x''), ('', 'Pier', 'p', 2, x'');
CREATE TABLE MESH_CASES (ID INTEGER, DATA_GUID TEXT, RESULT BLOB);
INSERT INTO MESH_CASES VALUES
    (1, 'plain', x'00FF00'), (5, '', x''), (6, '', x''), (7, '', CAST('v 0 0 0' AS BLOB)), (-1, '', x''), (2, '', x''),
    (-9223372036854775808, '', x'09');
-- No handle that the library opens runs a trigger.
CREATE TRIGGER NEVER_RUN UPDATE ON MESHES BEGIN SELECT RAISE(ABORT, 'a trigger has run'); END;
