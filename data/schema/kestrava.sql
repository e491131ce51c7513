-- kestrava.mdb: the working data of the agency.
-- Numbers that rules compare with 0 start at 0, so that a row made without them is found. A YESNO starts false by itself.
-- Tables without a key may hold equal rows: the lists behind them are never tested for duplicates.

CREATE TABLE ClientPR (
    CLIENT TEXT(10) NOT NULL PRIMARY KEY,
    LASTNAME TEXT(30),
    FIRSTNAM TEXT(30),
    STREET TEXT(30),
    ADDRESS2 TEXT(30),
    apt TEXT(5),
    CITY TEXT(20),
    STATE TEXT(20),
    ZIP TEXT(10),
    PHONE TEXT(20),
    EXT_PHONE TEXT(20),
    ALT_PHONE_DESC TEXT(10),
    EMAIL TEXT(100),
    SSN TEXT(11),
    BDATE DATETIME,
    SEX TEXT(10),
    LANGUAGE TEXT(10),
    ETHNIC TEXT(10),
    BORO TEXT(50),
    PROV_SEX TEXT(10),
    ORD_DISCPL TEXT(10),
    HOL_COV TEXT(10),
    grouping TEXT(50),
    MANAGER TEXT(10),
    FSL TEXT(10),
    DISASTER_CODE TEXT(10),
    DIET TEXT(10),
    EMERGCONT TEXT(50),
    EMGSTREET TEXT(50),
    EMGCITY TEXT(25),
    EMGSTATE TEXT(20),
    EMGZIP TEXT(10),
    EMGCYPHONe TEXT(20),
    EMG_NAME2 TEXT(20),
    EMG_PHONE2 TEXT(20),
    EMG_NAME3 TEXT(20),
    EMG_PHONE3 TEXT(20),
    NURSE TEXT(10),
    NURLVCODE TEXT(10),
    NURLASTVIS DATETIME,
    DIAGNOSIS TEXT(10),
    DIAGNOSIS2 TEXT(10),
    DIAGNOSIS3 TEXT(10),
    diagnosis4 TEXT(100),
    CASE_NAME TEXT(30),
    CASE_NOTE MEMO,
    DOC_NAME TEXT(30),
    DOC_NOTE MEMO,
    qbclass TEXT(50),
    external_id TEXT(50),
    External_id2 TEXT(50),
    External_id3 TEXT(50),
    istelephony YESNO,
    MEDICAIDNO TEXT(20),
    directions MEMO,
    Comments MEMO,
    BILL_NAME TEXT(35),
    BILL_LASTNAME TEXT(35),
    BILL_ADDRESS TEXT(35),
    BILL_ADDRESS2 TEXT(35),
    BILL_CITY TEXT(20),
    BILL_STATE TEXT(20),
    BILL_ZIP TEXT(10),
    BILL_PHONE TEXT(20),
    Bill_How_Often TEXT(1),
    BILLING_TYPE TEXT(10),
    Billmile_rate CURRENCY DEFAULT 0,
    BILL_MILEAGE YESNO,
    BILL_ERRAND YESNO,
    BILL_EXPENSES YESNO,
    BILL_HOLIDAY YESNO,
    Bill_Ot YESNO,
    Invoice_Terms TEXT(255),
    Invoice_Instructions MEMO,
    First_contact DATETIME,
    STARTSERVC DATETIME,
    CASEEXPDAT DATETIME,
    ref_grouping TEXT(50),
    ref_source TEXT(50),
    Ref_name TEXT(50),
    CASESTATCD TEXT(1),
    potientalstatus TEXT(10),
    ISTEMPLATE SHORT DEFAULT 0,
    Deleted YESNO,
    vendor TEXT(10),
    status_date DATETIME,
    Status TEXT(1),
    User_Id TEXT(20)
);
CREATE INDEX ClientPR_name ON ClientPR (LASTNAME, FIRSTNAM);

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

CREATE TABLE Authorizations (
    sequence COUNTER PRIMARY KEY,
    CLIENT TEXT(10),
    bill_code LONG,
    bill_name TEXT(50),
    Payer_Auth_ID TEXT(50),
    visit_type TEXT(10),
    vis_desc TEXT(50),
    from_date DATETIME,
    to_DATE DATETIME,
    HRS DOUBLE DEFAULT 0,
    WEEKORMONTH TEXT(1),
    status_code TEXT(1),
    status_date DATETIME,
    EMP_Type TEXT(10),
    Live_in TEXT(1),
    sch_type TEXT(1),
    SHIFT_CODE TEXT(1),
    Min_Sch_Hours DOUBLE DEFAULT 0,
    Max_Sch_Hours DOUBLE DEFAULT 0,
    NOTES MEMO,
    vendor TEXT(10),
    cobilling_type SHORT DEFAULT 0,
    cobilling_amount DOUBLE DEFAULT 0,
    COBilling_HowOften TEXT(1)
);
CREATE INDEX Authorizations_client ON Authorizations (CLIENT);

CREATE TABLE clirate (
    CLIENT TEXT(10),
    visittype TEXT(10),
    Description TEXT(50),
    method TEXT(1),
    rate1 CURRENCY DEFAULT 0,
    rate2 CURRENCY DEFAULT 0,
    rate3 CURRENCY DEFAULT 0,
    rate4 CURRENCY DEFAULT 0,
    rate5 CURRENCY DEFAULT 0,
    rate6 CURRENCY DEFAULT 0,
    liveinrate CURRENCY DEFAULT 0
);
CREATE INDEX clirate_client ON clirate (CLIENT, visittype);

CREATE TABLE billcode_imaster (
    billcode LONG NOT NULL PRIMARY KEY,
    insname TEXT(50),
    insaddress TEXT(50),
    inscity TEXT(25),
    insstate TEXT(20),
    inszip TEXT(10),
    InsPhone TEXT(20),
    inscareof TEXT(50),
    bill_mileage YESNO,
    bill_errand YESNO,
    bill_expenses YESNO
);

CREATE TABLE billcode_idetail (
    billcode LONG,
    visittype TEXT(10),
    Description TEXT(50),
    method TEXT(1),
    rate1 CURRENCY DEFAULT 0,
    rate2 CURRENCY DEFAULT 0,
    rate3 CURRENCY DEFAULT 0,
    rate4 CURRENCY DEFAULT 0,
    rate5 CURRENCY DEFAULT 0,
    rate6 CURRENCY DEFAULT 0,
    liveinrate CURRENCY DEFAULT 0
);
CREATE INDEX billcode_idetail_billcode ON billcode_idetail (billcode, visittype);

CREATE TABLE assign (
    sequence COUNTER PRIMARY KEY,
    author_seq LONG DEFAULT 0,
    vendor TEXT(10),
    CLIENT TEXT(10),
    cli_name TEXT(65),
    CLIENT_STATUS TEXT(1),
    author_status TEXT(1),
    visit_type TEXT(10),
    visit_desc TEXT(50),
    billto LONG DEFAULT 0,
    emp_id TEXT(10),
    emp_name TEXT(65),
    EMP1SSN TEXT(11),
    [Day] TEXT(3),
    Status TEXT(10),
    St_time DATETIME,
    END_TIME DATETIME,
    HRS DOUBLE DEFAULT 0,
    NUMWEEKS DOUBLE DEFAULT 0,
    howoften SHORT DEFAULT 0,
    st_date DATETIME,
    END_DATE DATETIME,
    Last_date DATETIME,
    Type TEXT(1)
);
CREATE INDEX assign_author ON assign (author_seq);
CREATE INDEX assign_client ON assign (CLIENT);
CREATE INDEX assign_emp ON assign (emp_id, [Day]);

CREATE TABLE assign_task (
    ID LONG,
    dow TEXT(3),
    task TEXT(4),
    Description TEXT(100)
);
CREATE INDEX assign_task_id ON assign_task (ID);

CREATE TABLE sch_day (
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
CREATE INDEX sch_day_client ON sch_day (CLIENT, st_date);
CREATE INDEX sch_day_emp ON sch_day (emp_id, st_date);
CREATE INDEX sch_day_date ON sch_day (st_date);
CREATE INDEX sch_day_assign ON sch_day (assign_seq);
CREATE INDEX sch_day_author ON sch_day (author_seq);

CREATE TABLE Employee (
    emp_id TEXT(10) NOT NULL PRIMARY KEY,
    LastName TEXT(30),
    FirstName TEXT(30),
    Street TEXT(50),
    Address2 TEXT(50),
    City TEXT(25),
    State TEXT(20),
    Zip TEXT(10),
    Phone TEXT(20),
    pager TEXT(20),
    cellphone TEXT(20),
    Fax TEXT(20),
    Email TEXT(100),
    SS TEXT(11),
    dept TEXT(50),
    Disp TEXT(10),
    disp_level SHORT DEFAULT 0,
    tot_lang TEXT(50),
    emlang1 TEXT(10),
    emlang2 TEXT(10),
    emlang3 TEXT(10),
    SEX TEXT(10),
    EMP_TYPE TEXT(10),
    live_in YESNO,
    t_code TEXT(1),
    t_date DATETIME,
    hrsper_week DOUBLE DEFAULT 0,
    EXP_CYMMDD DATETIME,
    em_comment MEMO,
    PAY_MILEAGE YESNO,
    PAY_ERRAND YESNO,
    PAY_EXPENSES YESNO,
    method TEXT(1),
    rate1 CURRENCY DEFAULT 0,
    rate2 CURRENCY DEFAULT 0,
    rate3 CURRENCY DEFAULT 0,
    rate4 CURRENCY DEFAULT 0,
    rate5 CURRENCY DEFAULT 0,
    rate6 CURRENCY DEFAULT 0,
    liveinrate CURRENCY DEFAULT 0
);
CREATE INDEX Employee_name ON Employee (LastName, FirstName);

CREATE TABLE emprate (
    employee TEXT(10),
    client TEXT(10) DEFAULT '',
    visittype TEXT(10),
    method TEXT(1),
    rate1 CURRENCY DEFAULT 0,
    rate2 CURRENCY DEFAULT 0,
    rate3 CURRENCY DEFAULT 0,
    rate4 CURRENCY DEFAULT 0,
    rate5 CURRENCY DEFAULT 0,
    rate6 CURRENCY DEFAULT 0,
    liveinrate CURRENCY DEFAULT 0
);
CREATE INDEX emprate_employee ON emprate (employee, visittype);

CREATE TABLE Emp_ban (
    CLIENT TEXT(10),
    emp_id TEXT(10),
    Emp_name TEXT(65),
    Notes MEMO
);
CREATE INDEX Emp_ban_client ON Emp_ban (CLIENT);
CREATE INDEX Emp_ban_emp ON Emp_ban (emp_id);

CREATE TABLE emp_misc (
    emp TEXT(10),
    area TEXT(3),
    ID TEXT(10),
    Description TEXT(100)
);
CREATE INDEX emp_misc_emp ON emp_misc (emp, area);

CREATE TABLE emp_personnel (
    emp_id TEXT(10),
    ID LONG,
    Description TEXT(100),
    input_desc TEXT(20),
    input_text TEXT(255)
);
CREATE INDEX emp_personnel_emp ON emp_personnel (emp_id);

CREATE TABLE Emp_required (
    EMP_ID TEXT(10),
    ID LONG,
    Description TEXT(100),
    months SHORT DEFAULT 0,
    input_date DATETIME,
    input_desc TEXT(20),
    exp_date DATETIME
);
CREATE INDEX Emp_required_emp ON Emp_required (EMP_ID);

-- An area stands in district. Older rows have it in BORO.
CREATE TABLE emp_locations (
    emp TEXT(10),
    district TEXT(50),
    BORO TEXT(50)
);
CREATE INDEX emp_locations_emp ON emp_locations (emp);

CREATE TABLE Emp_willwork (
    emp_id TEXT(10),
    st_date DATETIME,
    St_time DATETIME,
    END_TIME DATETIME
);
CREATE INDEX Emp_willwork_emp ON Emp_willwork (emp_id, st_date);

CREATE TABLE cli_emp (
    client TEXT(10),
    emp_id TEXT(10),
    Last_date DATETIME,
    num_visits LONG DEFAULT 0
);
CREATE INDEX cli_emp_client ON cli_emp (client);

CREATE TABLE cli_misc (
    CLIENT TEXT(10),
    Area TEXT(3),
    ID TEXT(10),
    Description TEXT(100)
);
CREATE INDEX cli_misc_client ON cli_misc (CLIENT, Area);

CREATE TABLE care_plan (
    CLIENT TEXT(10),
    [Group] TEXT(50),
    Description TEXT(100)
);
CREATE INDEX care_plan_client ON care_plan (CLIENT);

CREATE TABLE cli_personnel (
    CLIENT TEXT(10),
    ID LONG,
    Description TEXT(100),
    input_desc TEXT(20),
    input_text TEXT(255)
);
CREATE INDEX cli_personnel_client ON cli_personnel (CLIENT);

CREATE TABLE CLI_Required (
    CLIENT TEXT(10),
    ID LONG,
    Description TEXT(100),
    months SHORT DEFAULT 0,
    input_date DATETIME,
    input_desc TEXT(20),
    exp_date DATETIME
);
CREATE INDEX CLI_Required_client ON CLI_Required (CLIENT);

CREATE TABLE cli_documents (
    CLIENT TEXT(10),
    Path TEXT(255),
    Type TEXT(3),
    Description TEXT(255)
);
CREATE INDEX cli_documents_client ON cli_documents (CLIENT);

CREATE TABLE logging (
    id COUNTER PRIMARY KEY,
    CLIENT TEXT(10),
    cli_name TEXT(65),
    EMP TEXT(10),
    Emp_name TEXT(65),
    LOG_DATE DATETIME,
    LOG_TIME DATETIME,
    Description TEXT(50),
    LONG_DESC MEMO,
    log_emp TEXT(20),
    edit_DATE DATETIME,
    ReferralID LONG DEFAULT 0,
    ReferralName TEXT(50)
);
CREATE INDEX logging_client ON logging (CLIENT, LOG_DATE);
CREATE INDEX logging_date ON logging (LOG_DATE);

CREATE TABLE tasks (
    sequence COUNTER PRIMARY KEY,
    UserID TEXT(20),
    employee_name TEXT(50),
    assigned TEXT(20),
    Subject TEXT(255),
    DUE_DATE DATETIME,
    Start_Date DATETIME,
    START_TIME DATETIME,
    END_TIME DATETIME,
    Category TEXT(25),
    priority TEXT(7),
    Status TEXT(25),
    Reminder SHORT DEFAULT 0,
    reminder_date DATETIME,
    reminder_time DATETIME,
    [Memo] MEMO,
    completed YESNO,
    PER_UNIT LONG,
    PER_TYPE TEXT(10),
    CLIENT TEXT(10),
    emp_id TEXT(10),
    contact LONG DEFAULT 0,
    LoggingSeq LONG DEFAULT 0,
    OnGoing_Seq LONG DEFAULT 0,
    Ongoing_Desc TEXT(100),
    OnGoingOriginal LONG
);
CREATE INDEX tasks_client ON tasks (CLIENT, Start_Date);
CREATE INDEX tasks_ongoing ON tasks (OnGoing_Seq, Start_Date);
CREATE INDEX tasks_logging ON tasks (LoggingSeq);
CREATE INDEX tasks_date ON tasks (Start_Date);

CREATE TABLE ongoing (
    sequence COUNTER PRIMARY KEY,
    Type TEXT(1),
    parameter1 TEXT(20),
    parameter2 TEXT(20),
    parameter3 TEXT(20),
    Start_Date DATETIME,
    END_DATE DATETIME
);

CREATE TABLE referral (
    sequence COUNTER PRIMARY KEY,
    FullName TEXT(50),
    Address TEXT(50),
    City TEXT(25),
    State TEXT(20),
    Zip TEXT(10),
    Phone TEXT(20),
    ext TEXT(10),
    Fax TEXT(20),
    Category TEXT(50),
    Status TEXT(10),
    status_date DATETIME,
    Ref_Group TEXT(10),
    first_contact DATETIME,
    ranking SHORT DEFAULT 0,
    Weekstoreview SHORT DEFAULT 0,
    lastreviewDate DATETIME
);
CREATE INDEX referral_name ON referral (FullName);

CREATE TABLE referral_contacts (
    referral_seq LONG,
    FullName TEXT(50),
    Title TEXT(50),
    Address TEXT(50),
    City TEXT(25),
    State TEXT(20),
    Phone TEXT(20),
    ext TEXT(10),
    Email TEXT(100)
);
CREATE INDEX referral_contacts_referral ON referral_contacts (referral_seq);

CREATE TABLE Default_settings (
    master_name TEXT(200),
    field_text TEXT(255)
);
CREATE INDEX Default_settings_name ON Default_settings (master_name);

CREATE TABLE user_Default_options (
    master_name TEXT(200),
    option_text TEXT(10)
);

-- Written by the payroll and billing modules, counted here before a client is deleted.
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
