-- The schema whose rows refer to definitions by GUID. SAT_CASES and MESH_CASES say what a record is filled with, and
-- the bytes that its pull gives.
CREATE TABLE SAT_GEOMETRIES (GUID TEXT, DATA_GUID TEXT, PARENT_CLASS TEXT, PARENT_GUID TEXT, "INDEX" INTEGER,
    XFORM TEXT, CATEGORY TEXT, DATA TEXT);
CREATE TABLE SAT_DEFINITIONS (GUID TEXT, DATA BLOB);
CREATE INDEX SAT_DEFINITIONS_GUID ON SAT_DEFINITIONS (GUID);
CREATE TABLE MESHES (KEY TEXT, NAME TEXT, DATA_GUID TEXT, PARENT_CLASS TEXT, PARENT_ID TEXT, XFORM TEXT, DATA BLOB,
    MTL BLOB);
CREATE TABLE MESH_DEFINITIONS (GUID TEXT, DATA BLOB);

-- What no pull may read in this schema.
INSERT INTO SAT_GEOMETRIES VALUES ('plain', 'plain', 'Pier', 'p', 0, NULL, NULL, 'of the geometry row');
INSERT INTO MESHES VALUES ('k', 'n', 'plain', 'Pier', 'p', NULL, x'00', x'00');

INSERT INTO SAT_DEFINITIONS VALUES
    ('plain', CAST('400 0 1 0' AS BLOB)),
    ('several', CAST('first' AS BLOB)), ('several', CAST('second' AS BLOB)),
    ('zeros', x'410042'), ('not text', x'FF80C3'), ('null', NULL), ('no bytes', x''),
    ('zeroblob', zeroblob(3)),
    ('text', 'Bögen €'),
    ('', CAST('under an empty GUID' AS BLOB)),
    ('it''s', x'01'), ('its', x'02'), ('"it"', x'03'), ('[it]', x'04'), ('a\b', x'05'), ('ab', x'06'),
    ('a''; DROP TABLE SAT_DEFINITIONS; --', x'07'), ('%', x'08'), ('_', x'09'), ('😀', x'0A'), ('😁', x'0B'),
    ('橋', x'0E'), (' plain', x'0C'), ('PLAIN', x'0D');
INSERT INTO MESH_DEFINITIONS SELECT GUID, DATA FROM SAT_DEFINITIONS;

CREATE TABLE SAT_CASES (DATA_GUID TEXT, PARENT_CLASS TEXT, PARENT_GUID TEXT, "INDEX" INTEGER, RESULT BLOB);
INSERT INTO SAT_CASES (DATA_GUID, RESULT) VALUES
    ('plain', CAST('400 0 1 0' AS BLOB)), ('several', CAST('first' AS BLOB)), ('zeros', x'410042'),
    ('not text', x'FF80C3'), ('null', x''), ('no bytes', x''), ('zeroblob', x'000000'),
    ('text', x'42C3B667656E20E282AC'), ('', CAST('under an empty GUID' AS BLOB)),
    ('no such row', x''), ('it''s', x'01'), ('its', x'02'), ('"it"', x'03'), ('[it]', x'04'), ('a\b', x'05'),
    ('ab', x'06'), ('a''; DROP TABLE SAT_DEFINITIONS; --', x'07'), ('%', x'08'), ('_', x'09'), ('😀', x'0A'),
    ('😁', x'0B'), ('😂', x''), ('橋', x'0E'), (' plain', x'0C'), ('PLAIN', x'0D'), ('''', x''), ('GUID', x''),
    (''' OR 1=1 --', x'');
CREATE TABLE MESH_CASES (ID INTEGER, DATA_GUID TEXT, RESULT BLOB);
INSERT INTO MESH_CASES SELECT 1, DATA_GUID, RESULT FROM SAT_CASES;
