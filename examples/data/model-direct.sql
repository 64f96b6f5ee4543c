-- A small model database in the schema whose rows hold their data themselves.
BEGIN;
CREATE TABLE SAT_GEOMETRIES (GUID TEXT, PARENT_CLASS TEXT, PARENT_GUID TEXT, "INDEX" INTEGER, XFORM TEXT,
    CATEGORY TEXT, DATA TEXT);
CREATE TABLE MESHES (ID INTEGER PRIMARY KEY, KEY TEXT, NAME TEXT, PARENT_CLASS TEXT, PARENT_ID TEXT, XFORM TEXT,
    DATA BLOB, MTL BLOB);
CREATE INDEX SAT_GEOMETRIES_PARENT ON SAT_GEOMETRIES (PARENT_GUID, PARENT_CLASS, "INDEX");

INSERT INTO SAT_GEOMETRIES VALUES ('{A0000001-0000-4000-8000-000000000001}', 'Pier', '{7C1E5A52-0D5B-4B0A-9E55-3D1B0F6A2C11}',
    0, '1 0 0 0 0 1 0 0 0 0 1 0 12.5 -3 0 1', 'footing',
    '400 85 1 0
11 ORL_Sectrix 8 ACIS 4.0 24 Tue Nov 24 12:00:00 2026
1000 9.9999999999999995e-07 1e-10
body $-1 $1 $-1 $-1 #
lump $-1 $-1 $2 $0 #
shell $-1 $-1 $-1 $3 $-1 $1 #
face $-1 $6 $4 $2 $-1 $5 forward single #
loop $-1 $-1 $21 $3 #
plane-surface $-1 -2 -1.5 0 0 0 -1 0 1 0 forward_v I I I I #
face $-1 $9 $7 $2 $-1 $8 forward single #
loop $-1 $-1 $25 $6 #
plane-surface $-1 -2 -1.5 1 0 0 1 1 0 0 forward_v I I I I #
face $-1 $12 $10 $2 $-1 $11 forward single #
loop $-1 $-1 $29 $9 #
plane-surface $-1 -2 -1.5 0 0 -1 0 1 0 0 forward_v I I I I #
face $-1 $15 $13 $2 $-1 $14 forward single #
loop $-1 $-1 $33 $12 #
plane-surface $-1 -2 1.5 0 0 1 0 0 0 1 forward_v I I I I #
face $-1 $18 $16 $2 $-1 $17 forward single #
loop $-1 $-1 $37 $15 #
plane-surface $-1 -2 -1.5 0 -1 0 0 0 0 1 forward_v I I I I #
face $-1 $-1 $19 $2 $-1 $20 forward single #
loop $-1 $-1 $41 $18 #
plane-surface $-1 2 -1.5 0 1 0 0 0 1 0 forward_v I I I I #
coedge $-1 $22 $24 $40 $45 forward $4 $-1 #
coedge $-1 $23 $21 $36 $47 forward $4 $-1 #
coedge $-1 $24 $22 $41 $49 forward $4 $-1 #
coedge $-1 $21 $23 $29 $51 forward $4 $-1 #
coedge $-1 $26 $28 $31 $53 forward $7 $-1 #
coedge $-1 $27 $25 $43 $55 forward $7 $-1 #
coedge $-1 $28 $26 $34 $57 forward $7 $-1 #
coedge $-1 $25 $27 $38 $59 forward $7 $-1 #
coedge $-1 $30 $32 $24 $51 reversed $10 $-1 #
coedge $-1 $31 $29 $44 $61 forward $10 $-1 #
coedge $-1 $32 $30 $25 $53 reversed $10 $-1 #
coedge $-1 $29 $31 $37 $63 forward $10 $-1 #
coedge $-1 $34 $36 $39 $65 forward $13 $-1 #
coedge $-1 $35 $33 $27 $57 reversed $13 $-1 #
coedge $-1 $36 $34 $42 $67 forward $13 $-1 #
coedge $-1 $33 $35 $22 $47 reversed $13 $-1 #
coedge $-1 $38 $40 $32 $63 reversed $16 $-1 #
coedge $-1 $39 $37 $28 $59 reversed $16 $-1 #
coedge $-1 $40 $38 $33 $65 reversed $16 $-1 #
coedge $-1 $37 $39 $21 $45 reversed $16 $-1 #
coedge $-1 $42 $44 $23 $49 reversed $19 $-1 #
coedge $-1 $43 $41 $35 $67 reversed $19 $-1 #
coedge $-1 $44 $42 $26 $55 reversed $19 $-1 #
coedge $-1 $41 $43 $30 $61 reversed $19 $-1 #
edge $-1 $69 $73 $21 $46 forward #
straight-curve $-1 -2 -1.5 0 0 1 0 I I #
edge $-1 $73 $75 $22 $48 forward #
straight-curve $-1 -2 1.5 0 1 0 0 I I #
edge $-1 $75 $71 $23 $50 forward #
straight-curve $-1 2 1.5 0 0 -1 0 I I #
edge $-1 $71 $69 $24 $52 forward #
straight-curve $-1 2 -1.5 0 -1 0 0 I I #
edge $-1 $77 $79 $25 $54 forward #
straight-curve $-1 -2 -1.5 1 1 0 0 I I #
edge $-1 $79 $83 $26 $56 forward #
straight-curve $-1 2 -1.5 1 0 1 0 I I #
edge $-1 $83 $81 $27 $58 forward #
straight-curve $-1 2 1.5 1 -1 0 0 I I #
edge $-1 $81 $77 $28 $60 forward #
straight-curve $-1 -2 1.5 1 0 -1 0 I I #
edge $-1 $71 $79 $30 $62 forward #
straight-curve $-1 2 -1.5 0 0 0 1 I I #
edge $-1 $77 $69 $32 $64 forward #
straight-curve $-1 -2 -1.5 1 0 0 -1 I I #
edge $-1 $73 $81 $33 $66 forward #
straight-curve $-1 -2 1.5 0 0 0 1 I I #
edge $-1 $83 $75 $35 $68 forward #
straight-curve $-1 2 1.5 1 0 0 -1 I I #
vertex $-1 $45 $70 #
point $-1 -2 -1.5 0 #
vertex $-1 $49 $72 #
point $-1 2 -1.5 0 #
vertex $-1 $45 $74 #
point $-1 -2 1.5 0 #
vertex $-1 $47 $76 #
point $-1 2 1.5 0 #
vertex $-1 $53 $78 #
point $-1 -2 -1.5 1 #
vertex $-1 $53 $80 #
point $-1 2 -1.5 1 #
vertex $-1 $57 $82 #
point $-1 -2 1.5 1 #
vertex $-1 $55 $84 #
point $-1 2 1.5 1 #
End-of-ACIS-data
');

INSERT INTO SAT_GEOMETRIES VALUES ('{A0000001-0000-4000-8000-000000000002}', 'Pier', '{7C1E5A52-0D5B-4B0A-9E55-3D1B0F6A2C11}',
    1, '1 0 0 0 0 1 0 0 0 0 1 0 12.5 -3 0 1', 'stem',
    '400 85 1 0
11 ORL_Sectrix 8 ACIS 4.0 24 Tue Nov 24 12:00:00 2026
1000 9.9999999999999995e-07 1e-10
body $-1 $1 $-1 $-1 #
lump $-1 $-1 $2 $0 #
shell $-1 $-1 $-1 $3 $-1 $1 #
face $-1 $6 $4 $2 $-1 $5 forward single #
loop $-1 $-1 $21 $3 #
plane-surface $-1 -0.5 -0.5 1 0 0 -1 0 1 0 forward_v I I I I #
face $-1 $9 $7 $2 $-1 $8 forward single #
loop $-1 $-1 $25 $6 #
plane-surface $-1 -0.5 -0.5 6.5 0 0 1 1 0 0 forward_v I I I I #
face $-1 $12 $10 $2 $-1 $11 forward single #
loop $-1 $-1 $29 $9 #
plane-surface $-1 -0.5 -0.5 1 0 -1 0 1 0 0 forward_v I I I I #
face $-1 $15 $13 $2 $-1 $14 forward single #
loop $-1 $-1 $33 $12 #
plane-surface $-1 -0.5 0.5 1 0 1 0 0 0 1 forward_v I I I I #
face $-1 $18 $16 $2 $-1 $17 forward single #
loop $-1 $-1 $37 $15 #
plane-surface $-1 -0.5 -0.5 1 -1 0 0 0 0 1 forward_v I I I I #
face $-1 $-1 $19 $2 $-1 $20 forward single #
loop $-1 $-1 $41 $18 #
plane-surface $-1 0.5 -0.5 1 1 0 0 0 1 0 forward_v I I I I #
coedge $-1 $22 $24 $40 $45 forward $4 $-1 #
coedge $-1 $23 $21 $36 $47 forward $4 $-1 #
coedge $-1 $24 $22 $41 $49 forward $4 $-1 #
coedge $-1 $21 $23 $29 $51 forward $4 $-1 #
coedge $-1 $26 $28 $31 $53 forward $7 $-1 #
coedge $-1 $27 $25 $43 $55 forward $7 $-1 #
coedge $-1 $28 $26 $34 $57 forward $7 $-1 #
coedge $-1 $25 $27 $38 $59 forward $7 $-1 #
coedge $-1 $30 $32 $24 $51 reversed $10 $-1 #
coedge $-1 $31 $29 $44 $61 forward $10 $-1 #
coedge $-1 $32 $30 $25 $53 reversed $10 $-1 #
coedge $-1 $29 $31 $37 $63 forward $10 $-1 #
coedge $-1 $34 $36 $39 $65 forward $13 $-1 #
coedge $-1 $35 $33 $27 $57 reversed $13 $-1 #
coedge $-1 $36 $34 $42 $67 forward $13 $-1 #
coedge $-1 $33 $35 $22 $47 reversed $13 $-1 #
coedge $-1 $38 $40 $32 $63 reversed $16 $-1 #
coedge $-1 $39 $37 $28 $59 reversed $16 $-1 #
coedge $-1 $40 $38 $33 $65 reversed $16 $-1 #
coedge $-1 $37 $39 $21 $45 reversed $16 $-1 #
coedge $-1 $42 $44 $23 $49 reversed $19 $-1 #
coedge $-1 $43 $41 $35 $67 reversed $19 $-1 #
coedge $-1 $44 $42 $26 $55 reversed $19 $-1 #
coedge $-1 $41 $43 $30 $61 reversed $19 $-1 #
edge $-1 $69 $73 $21 $46 forward #
straight-curve $-1 -0.5 -0.5 1 0 1 0 I I #
edge $-1 $73 $75 $22 $48 forward #
straight-curve $-1 -0.5 0.5 1 1 0 0 I I #
edge $-1 $75 $71 $23 $50 forward #
straight-curve $-1 0.5 0.5 1 0 -1 0 I I #
edge $-1 $71 $69 $24 $52 forward #
straight-curve $-1 0.5 -0.5 1 -1 0 0 I I #
edge $-1 $77 $79 $25 $54 forward #
straight-curve $-1 -0.5 -0.5 6.5 1 0 0 I I #
edge $-1 $79 $83 $26 $56 forward #
straight-curve $-1 0.5 -0.5 6.5 0 1 0 I I #
edge $-1 $83 $81 $27 $58 forward #
straight-curve $-1 0.5 0.5 6.5 -1 0 0 I I #
edge $-1 $81 $77 $28 $60 forward #
straight-curve $-1 -0.5 0.5 6.5 0 -1 0 I I #
edge $-1 $71 $79 $30 $62 forward #
straight-curve $-1 0.5 -0.5 1 0 0 1 I I #
edge $-1 $77 $69 $32 $64 forward #
straight-curve $-1 -0.5 -0.5 6.5 0 0 -1 I I #
edge $-1 $73 $81 $33 $66 forward #
straight-curve $-1 -0.5 0.5 1 0 0 1 I I #
edge $-1 $83 $75 $35 $68 forward #
straight-curve $-1 0.5 0.5 6.5 0 0 -1 I I #
vertex $-1 $45 $70 #
point $-1 -0.5 -0.5 1 #
vertex $-1 $49 $72 #
point $-1 0.5 -0.5 1 #
vertex $-1 $45 $74 #
point $-1 -0.5 0.5 1 #
vertex $-1 $47 $76 #
point $-1 0.5 0.5 1 #
vertex $-1 $53 $78 #
point $-1 -0.5 -0.5 6.5 #
vertex $-1 $53 $80 #
point $-1 0.5 -0.5 6.5 #
vertex $-1 $57 $82 #
point $-1 -0.5 0.5 6.5 #
vertex $-1 $55 $84 #
point $-1 0.5 0.5 6.5 #
End-of-ACIS-data
');

INSERT INTO SAT_GEOMETRIES VALUES ('{A0000001-0000-4000-8000-000000000003}', 'Widerlager Süd', '{7C1E5A52-0D5B-4B0A-9E55-3D1B0F6A2C11}',
    0, '1 0 0 0 0 1 0 0 0 0 1 0 12.5 -3 0 1', 'not stored',
    NULL);

INSERT INTO MESHES VALUES (1, 'footing', 'Footing of pier 1', 'Pier', '{7C1E5A52-0D5B-4B0A-9E55-3D1B0F6A2C11}',
    '1 0 0 0 0 1 0 0 0 0 1 0 12.5 -3 0 1',
    CAST('o footing
v -2 -1.5 0
v 2 -1.5 0
v -2 1.5 0
v 2 1.5 0
v -2 -1.5 1
v 2 -1.5 1
v -2 1.5 1
v 2 1.5 1
f 1 3 4 2
f 5 6 8 7
f 1 2 6 5
f 3 7 8 4
f 1 5 7 3
f 2 4 8 6
' AS BLOB),
    CAST('newmtl concrete
Kd 0.7 0.7 0.68
' AS BLOB));

INSERT INTO MESHES VALUES (2, 'deck', 'Fahrbahnplatte, Überbau', 'Deck', '{7C1E5A52-0D5B-4B0A-9E55-3D1B0F6A2C11}',
    '1 0 0 0 0 1 0 0 0 0 1 0 12.5 -3 0 1',
    x'080000000C0000000000A0C00000A0C10000D0400000A0400000A0C10000D0400000A0C00000A0410000D0400000A0400000A0410000D0400000A0C00000A0C1CDCCEC400000A0400000A0C1CDCCEC400000A0C00000A041CDCCEC400000A0400000A041CDCCEC40000002000300000003000100040005000700040007000600000001000500000005000400020006000700020007000300000004000600000006000200010003000700010007000500',
    CAST('newmtl concrete
Kd 0.7 0.7 0.68
' AS BLOB));
COMMIT;
