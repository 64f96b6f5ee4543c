#!/usr/bin/env python3
"""Writes the database files that the fuzzer starts from into the folder database beside this script.

The same bytes each time: make_databases.py. A file is named after what is unusual in it. It holds as few rows as a pull
can find: GUIDs 'a' and 'b', the parent 'p' of class 'Pier', the numbers 0, 1 and -7."""
import pathlib
import sqlite3

PAGE = 512
FOLDER = pathlib.Path(__file__).parent / "database"

DEFINITIONS = "CREATE TABLE SAT_GEOMETRIES(DATA_GUID);"
DIRECT = 'CREATE TABLE SAT_GEOMETRIES(PARENT_CLASS,PARENT_GUID,"INDEX",DATA);'
DIRECT_ROWS = DIRECT + """
    INSERT INTO SAT_GEOMETRIES VALUES('Pier','p',0,'400 0 1 0'),('Pier','p',-7,'B€');
    CREATE TABLE MESHES(DATA BLOB);
    INSERT INTO MESHES VALUES(x'00FF00'),(zeroblob(300));"""
# As deep as SQLite takes an expression.
DEEP = "+N" * 989


def columns_of_each_other(count, expression):
    return "".join(f",a{i} AS({expression.format(f'a{i - 1}' if i else 'N')})" for i in range(count))


def with_rows_of_the_schema(*rows):
    """Rows that lie about what their SQL makes: type, name, root page, SQL."""
    values = ",".join(f"('{kind}','{name}','{name}',{page},'{sql}')" for kind, name, page, sql in rows)
    return f"PRAGMA writable_schema=ON; INSERT INTO sqlite_schema VALUES{values};"


DATABASES = {
    "definitions": """
        CREATE TABLE SAT_GEOMETRIES(GUID,DATA_GUID); CREATE TABLE SAT_DEFINITIONS(GUID TEXT,DATA BLOB);
        INSERT INTO SAT_DEFINITIONS VALUES('b',x'00FF'),('a',CAST('400 0 1 0' AS BLOB));
        CREATE TABLE MESHES(KEY,DATA_GUID); CREATE TABLE MESH_DEFINITIONS(GUID TEXT,DATA BLOB);
        INSERT INTO MESH_DEFINITIONS VALUES('b',zeroblob(900)),('a',x'00');""",
    "indexed": DEFINITIONS + """
        CREATE TABLE SAT_DEFINITIONS(GUID TEXT PRIMARY KEY,DATA BLOB) WITHOUT ROWID;
        INSERT INTO SAT_DEFINITIONS VALUES('b',x'00FF'),('a',CAST('400 0 1 0' AS BLOB));
        CREATE TABLE MESHES(ID INTEGER PRIMARY KEY,DATA_GUID); CREATE TABLE MESH_DEFINITIONS(GUID TEXT,DATA BLOB);
        CREATE INDEX I ON MESH_DEFINITIONS(GUID);
        INSERT INTO MESH_DEFINITIONS VALUES('b',x'03'),('a',x'0102');""",
    "direct": DIRECT_ROWS,
    "direct-utf-16": "PRAGMA encoding='UTF-16le';" + DIRECT_ROWS,
    "without-rowid": DEFINITIONS + """
        CREATE TABLE SAT_DEFINITIONS(GUID PRIMARY KEY,DATA) WITHOUT ROWID; INSERT INTO SAT_DEFINITIONS VALUES('a','text');
        CREATE TABLE MESHES(K PRIMARY KEY,DATA) WITHOUT ROWID; INSERT INTO MESHES VALUES(1,'a');""",
    "rowid-column": DIRECT + """
        CREATE TABLE MESHES(rowid,oid TEXT,DATA,"");
        INSERT INTO MESHES VALUES(2,'1','row 1',0),(1,'2','row 2',0);""",
    "columns-2000": DIRECT + f"""
        CREATE TABLE MESHES(DATA,{",".join(f"c{i}" for i in range(1999))}); INSERT INTO MESHES(DATA) VALUES('a');""",
    "host-function": DEFINITIONS + """
        CREATE TABLE SAT_DEFINITIONS(GUID,DATA,CHECK(host(DATA)));
        INSERT INTO SAT_DEFINITIONS VALUES('a','text');
        CREATE INDEX I ON SAT_DEFINITIONS(host(GUID)); CREATE INDEX J ON SAT_DEFINITIONS(GUID) WHERE host(DATA);
        CREATE TABLE MESHES(N,DATA AS(host(N)) STORED); INSERT INTO MESHES VALUES(1);""",
    "fts5": DEFINITIONS + """
        CREATE VIRTUAL TABLE SAT_DEFINITIONS USING fts5(GUID,DATA); INSERT INTO SAT_DEFINITIONS VALUES('a','text');
        CREATE TABLE MESHES(DATA); INSERT INTO MESHES VALUES('a');""",
    "fts5-with-a-root-page": DEFINITIONS + """
        CREATE VIRTUAL TABLE SAT_DEFINITIONS USING fts5(GUID,DATA); INSERT INTO SAT_DEFINITIONS VALUES('a','text');
        CREATE TABLE MESHES(DATA); PRAGMA writable_schema=ON; UPDATE sqlite_schema SET rootpage=2 WHERE rootpage=0;""",
    "views": """
        CREATE TABLE T(GUID,DATA); INSERT INTO T VALUES('a',x'01');
        CREATE VIEW SAT_GEOMETRIES AS SELECT 1 DATA_GUID; CREATE VIEW SAT_DEFINITIONS AS SELECT * FROM T;
        CREATE VIEW MESHES AS SELECT 2 DATA_GUID; CREATE VIEW MESH_DEFINITIONS AS SELECT upper(GUID) GUID,DATA FROM T;""",
    "view-deep": f"""
        CREATE TABLE MESHES(N,DATA); INSERT INTO MESHES VALUES(1,NULL);
        CREATE VIEW SAT_GEOMETRIES AS SELECT 'Pier' PARENT_CLASS,'p' PARENT_GUID,0 "INDEX",N{DEEP} DATA FROM MESHES;""",
    "view-that-lies": "CREATE TABLE a(N);" + with_rows_of_the_schema(
        ("VIEW", "MESHES", 0, f"CREATE/**/VIEW MESHES AS SELECT N{DEEP} DATA FROM a")),
    "view-behind-a-decoy": DEFINITIONS + """
        CREATE TABLE other(GUID,DATA); INSERT INTO other VALUES('a','of the view');""" + with_rows_of_the_schema(
        ("VIEW", "SAT_DEFINITIONS", 0, "CREATE VIEW SAT_DEFINITIONS AS SELECT * FROM other"),
        ("table", "SAT_DEFINITIONS", 3, "CREATE TABLE IF NOT EXISTS SAT_DEFINITIONS(GUID, DATA)")),
    "pragma-table-of-its-own": DEFINITIONS + """
        CREATE TABLE SAT_DEFINITIONS(GUID,Y,DATA AS(Y||' computed')); INSERT INTO SAT_DEFINITIONS VALUES('a','x');
        CREATE VIRTUAL TABLE pragma_table_xinfo USING fts4(hidden);""",
    "generated-stored": DEFINITIONS + """
        CREATE TABLE SAT_DEFINITIONS(N,GUID AS(substr(N,2)) STORED,DATA AS(N||'!') STORED);
        INSERT INTO SAT_DEFINITIONS VALUES('xa');
        CREATE TABLE MESHES(N,DATA,LENGTH AS(length(DATA)) STORED); INSERT INTO MESHES VALUES(1,'ABC');""",
    "generated-virtual": DEFINITIONS + """
        CREATE TABLE SAT_DEFINITIONS(GUID,DATA AS(GUID||'!')); INSERT INTO SAT_DEFINITIONS VALUES('a');
        CREATE TABLE MESHES(N,DATA_GUID AS(N));""",
    "generated-deep": DIRECT + f"CREATE TABLE MESHES(N,DATA AS(N{DEEP})); INSERT INTO MESHES VALUES(1);",
    "generated-chain": DIRECT + f"""
        CREATE TABLE MESHES(N,DATA AS(a600){columns_of_each_other(601, "{0}")}); INSERT INTO MESHES VALUES(1);""",
    "generated-doubling": DIRECT + f"""
        CREATE TABLE MESHES(N,DATA AS(a39){columns_of_each_other(40, "{0}+{0}")}); INSERT INTO MESHES VALUES(1);""",
    "check-deep": DIRECT + f"""
        PRAGMA ignore_check_constraints=ON;
        CREATE TABLE MESHES(N,DATA,CHECK(DATA{"+1" * 970})); INSERT INTO MESHES(N) VALUES(1);""",
    "pages-without-end": DEFINITIONS + """
        CREATE TABLE SAT_DEFINITIONS(GUID,DATA); CREATE TABLE MESHES(DATA);
        CREATE TABLE leaf(GUID,DATA); INSERT INTO leaf VALUES('zzz','x');""",
}


def made_by(sql):
    connection = sqlite3.connect(":memory:", isolation_level=None)
    connection.create_function("host", 1, lambda value: value is not None, deterministic=True)
    connection.executescript(f"PRAGMA page_size={PAGE};" + sql)
    database = bytearray(connection.serialize())
    database[96:100] = bytes(4)  # the version of SQLite that wrote it
    return database


def refer_to_each_other(database):
    """Seven pages, each 41 times the parent of the next, and the last of the one row in the table leaf (page 5):
    so SAT_DEFINITIONS (page 3) has 41 to the power of seven rows."""
    first = len(database) // PAGE + 1
    for number, child in zip([3] + list(range(first, first + 6)), list(range(first, first + 6)) + [5]):
        cells = [PAGE - 5 * (i + 1) for i in range(40)]
        page = bytearray(PAGE)
        page[:8] = bytes([5, 0, 0]) + len(cells).to_bytes(2, "big") + cells[-1].to_bytes(2, "big") + bytes(1)
        page[8:12] = child.to_bytes(4, "big")
        for i, cell in enumerate(cells):
            page[12 + 2 * i:14 + 2 * i] = cell.to_bytes(2, "big")
            page[cell:cell + 5] = child.to_bytes(4, "big") + bytes([1])
        database[(number - 1) * PAGE:number * PAGE] = page
    database[28:32] = (len(database) // PAGE).to_bytes(4, "big")


def break_schema_and_encoding(database):
    """As a fuzzer left it: the number that stands for the encoding is none, names and root pages are damaged."""
    name = database.index(b"SAT_DEFINITIONS")
    database[25] = 0x40
    database[54:62] = bytes.fromhex("3ca4b30ed31c0541")
    database[name + 2] = 0x9D
    del database[-3:]


files = {f"{name}.db": made_by(sql) for name, sql in DATABASES.items()}
refer_to_each_other(files["pages-without-end.db"])
files["schema-and-encoding-broken.db"] = made_by(DATABASES["views"])
break_schema_and_encoding(files["schema-and-encoding-broken.db"])
files["empty.db"] = b""
files["no-database.db"] = b"x" * 600
for name, database in files.items():
    (FOLDER / name).write_bytes(database)
