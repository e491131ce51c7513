-- trans.mdb: what an On-the-Road workstation has added, changed and removed, one row a record with its net effect so far.

CREATE TABLE trans (
    Type TEXT(1),
    Module TEXT(1) NOT NULL,
    ID TEXT(50) NOT NULL,
    [WHEN] DATETIME,
    CONSTRAINT trans_key PRIMARY KEY (ID, Module)
);
