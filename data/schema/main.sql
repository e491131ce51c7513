-- main.mdb: the company-wide code tables and lists, which change rarely.

-- One row. A shift whose start is Null is not in use. NotUsed1 "Y" marks new visits for paperwork.
CREATE TABLE Agency (
    ag_name TEXT(50),
    wkending TEXT(10),
    billmile_rate CURRENCY DEFAULT 0,
    sch_weeks SHORT DEFAULT 0,
    NotUsed1 TEXT(10),
    map_adr TEXT(50),
    map_city TEXT(25),
    map_state TEXT(20),
    map_zip TEXT(10),
    start1 DATETIME,
    stop1 DATETIME,
    start2 DATETIME,
    stop2 DATETIME,
    start3 DATETIME,
    stop3 DATETIME,
    start6 DATETIME,
    stop6 DATETIME,
    start7 DATETIME,
    stop7 DATETIME,
    start8 DATETIME,
    stop8 DATETIME
);

CREATE TABLE Screens (
    Screen TEXT(10),
    access_code TEXT(20),
    access_ID TEXT(20),
    Description TEXT(100),
    System TEXT(20)
);
CREATE INDEX Screens_screen ON Screens (Screen);

CREATE TABLE Security (
    USerId TEXT(20),
    employee_name TEXT(50),
    status TEXT(10),
    usericon TEXT(50)
);

-- Which client is calling. The telephony system reads it.
CREATE TABLE hkeylonglat (
    branchid TEXT(10),
    CLTid TEXT(10),
    phonenum TEXT(20),
    addr TEXT(50),
    Zip TEXT(10),
    Status TEXT(1)
);
CREATE INDEX hkeylonglat_cltid ON hkeylonglat (CLTid);
CREATE INDEX hkeylonglat_phonenum ON hkeylonglat (phonenum);

CREATE TABLE cli_group (
    Description TEXT(50)
);

CREATE TABLE emp_group (
    Description TEXT(50)
);

CREATE TABLE Ref_group (
    Description TEXT(50)
);

CREATE TABLE doctors (
    id COUNTER PRIMARY KEY,
    Name TEXT(50),
    Address TEXT(50),
    City TEXT(25),
    State TEXT(20),
    Zip TEXT(10),
    Contact1 TEXT(50),
    Title TEXT(50),
    Phone TEXT(20),
    Fax TEXT(20),
    Contact2 TEXT(50),
    Note MEMO
);

CREATE TABLE casemgr (
    id COUNTER PRIMARY KEY,
    Name TEXT(50),
    Address TEXT(50),
    City TEXT(25),
    State TEXT(20),
    Zip TEXT(10),
    Contact1 TEXT(50),
    Title TEXT(50),
    Phone TEXT(20),
    Fax TEXT(20),
    Contact2 TEXT(50),
    Note MEMO
);

CREATE TABLE qbclass (
    Description TEXT(50)
);

CREATE TABLE LANGUAGE (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE ETHNIC (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE SEX (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE [PROVIDERS SEX] (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE DIET (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE NURSE (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE MANAGER (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE FSL (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE DIAGNOSIS (
    code TEXT(10),
    description TEXT(50)
);

-- The levels of training. A caregiver of a higher Value may do the work of a lower one.
CREATE TABLE DISCIPLINE (
    code TEXT(10),
    description TEXT(50),
    [Value] SHORT DEFAULT 0
);

CREATE TABLE BOROUGH (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE COLOR_RESULT (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE VISIT (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE [EMP STAT CODE] (
    code TEXT(10),
    description TEXT(50)
);

CREATE TABLE Visit_types (
    code TEXT(10),
    Description TEXT(50),
    payroll_or_billing TEXT(20),
    ord_Discpl TEXT(10)
);
CREATE INDEX Visit_types_code ON Visit_types (code);

CREATE TABLE cli_calltype (
    code TEXT(10),
    Description TEXT(100)
);

CREATE TABLE skills (
    code TEXT(10),
    Description TEXT(100),
    critical SHORT DEFAULT 0
);

CREATE TABLE cli_requirements (
    ID COUNTER PRIMARY KEY,
    Description TEXT(100),
    months SHORT DEFAULT 0
);

CREATE TABLE cli_PERSONNEL (
    ID COUNTER PRIMARY KEY,
    Description TEXT(100)
);

CREATE TABLE care_PLAN (
    code TEXT(50),
    Description TEXT(100)
);

CREATE TABLE Holidays (
    [date] DATETIME,
    Description TEXT(50)
);
CREATE INDEX Holidays_date ON Holidays ([date]);

CREATE TABLE tasks (
    code TEXT(4),
    Description TEXT(100)
);

CREATE TABLE ICD9 (
    code TEXT(10),
    Description TEXT(100)
);
CREATE INDEX ICD9_code ON ICD9 (code);

CREATE TABLE logging (
    CODE TEXT(10),
    DESCRIPTION TEXT(50)
);

CREATE TABLE todoActions (
    Description TEXT(25)
);
