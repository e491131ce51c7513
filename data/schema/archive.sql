-- archive.mdb: old rows that another module moves out of the working tables, in the form that they have there.

CREATE TABLE changes (
    Type TEXT(3),
    Area TEXT(50),
    [Date] DATETIME,
    [Time] TEXT(11),
    [User] TEXT(20),
    Status TEXT(20),
    reason MEMO
);
CREATE INDEX changes_area ON changes (Type, Area);
CREATE INDEX changes_date ON changes ([Date]);

CREATE TABLE Sch_day (
    sequence COUNTER PRIMARY KEY,
    CLIENT TEXT(10),
    vendor TEXT(10),
    emp_id TEXT(10),
    emp_name TEXT(65),
    emp_group TEXT(50),
    assign_seq LONG DEFAULT 0,
    author_seq LONG DEFAULT 0,
    sch_type TEXT(1),
    Sch_code TEXT(1),
    WEEKEND DATETIME,
    st_date DATETIME,
    Manager TEXT(10),
    St_time DATETIME,
    END_TIME DATETIME,
    HRS DOUBLE DEFAULT 0,
    [Day] TEXT(3),
    visit_type TEXT(10),
    visit_desc TEXT(50),
    billto LONG DEFAULT 0,
    cli_name TEXT(65),
    disaster_code TEXT(10),
    cli_group TEXT(50),
    paperwork YESNO,
    PAY_TRAVEL YESNO,
    PAY_ERRAND YESNO,
    PAY_EXPENSE YESNO,
    BILL_TRAVEL YESNO,
    bill_errand YESNO,
    BILL_EXPENSE YESNO,
    act_hrs DOUBLE DEFAULT 0,
    visit_time DATETIME,
    pay_override CURRENCY DEFAULT 0,
    bill_override CURRENCY DEFAULT 0,
    Cancelled YESNO,
    edited_by TEXT(20)
);
CREATE INDEX Sch_day_client ON Sch_day (CLIENT, st_date);

CREATE TABLE Payroll (
    sequence COUNTER PRIMARY KEY,
    CLIENT TEXT(10),
    emp_id TEXT(10),
    st_date DATETIME,
    visit_type TEXT(10),
    HRS DOUBLE DEFAULT 0,
    amount CURRENCY DEFAULT 0
);
CREATE INDEX Payroll_client ON Payroll (CLIENT);

CREATE TABLE Billing (
    sequence COUNTER PRIMARY KEY,
    CLIENT TEXT(10),
    billto LONG DEFAULT 0,
    st_date DATETIME,
    visit_type TEXT(10),
    HRS DOUBLE DEFAULT 0,
    amount CURRENCY DEFAULT 0
);
CREATE INDEX Billing_client ON Billing (CLIENT);
