-- SPDX-License-Identifier: GPL-3.0-or-later
-- The tables of an empty Belegung.twk.
-- The order of the columns is part of the format: many of them are reached by position only. SMALLINT holds 16 bits,
-- INTEGER 32 bits; the program keeps to these widths when it writes.

-- The stamp: "GPk1", and the version of what follows (store/db/Stempel.h).
PRAGMA application_id = 0x47506B31;
PRAGMA user_version = 1;

-- One row a Schema: btn1.. for Standart, btn101.. for Umschalt 1, btn1001.. for Umschalt 2.
CREATE TABLE tblTastatur (
    Schemaname TEXT NOT NULL PRIMARY KEY,
    btn1 TEXT DEFAULT '10,0,0-0-0',
    btn2 TEXT DEFAULT '10,0,0-0-0',
    btn3 TEXT DEFAULT '10,0,0-0-0',
    btn4 TEXT DEFAULT '10,0,0-0-0',
    btn5 TEXT DEFAULT '10,0,0-0-0',
    btn6 TEXT DEFAULT '10,0,0-0-0',
    btn7 TEXT DEFAULT '10,0,0-0-0',
    btn8 TEXT DEFAULT '10,0,0-0-0',
    btn9 TEXT DEFAULT '10,0,0-0-0',
    btn10 TEXT DEFAULT '10,0,0-0-0',
    btn11 TEXT DEFAULT '10,0,0-0-0',
    btn12 TEXT DEFAULT '10,0,0-0-0',
    Programmpfad TEXT,
    btn101 TEXT DEFAULT '10,0,0-0-0',
    btn102 TEXT DEFAULT '10,0,0-0-0',
    btn103 TEXT DEFAULT '10,0,0-0-0',
    btn104 TEXT DEFAULT '10,0,0-0-0',
    btn105 TEXT DEFAULT '10,0,0-0-0',
    btn106 TEXT DEFAULT '10,0,0-0-0',
    btn107 TEXT DEFAULT '10,0,0-0-0',
    btn108 TEXT DEFAULT '10,0,0-0-0',
    btn109 TEXT DEFAULT '10,0,0-0-0',
    btn110 TEXT DEFAULT '10,0,0-0-0',
    btn111 TEXT DEFAULT '10,0,0-0-0',
    btn112 TEXT DEFAULT '10,0,0-0-0',
    Funktion SMALLINT DEFAULT 0,
    btn1001 TEXT DEFAULT '10,0,0-0-0',
    btn1002 TEXT DEFAULT '10,0,0-0-0',
    btn1003 TEXT DEFAULT '10,0,0-0-0',
    btn1004 TEXT DEFAULT '10,0,0-0-0',
    btn1005 TEXT DEFAULT '10,0,0-0-0',
    btn1006 TEXT DEFAULT '10,0,0-0-0',
    btn1007 TEXT DEFAULT '10,0,0-0-0',
    btn1008 TEXT DEFAULT '10,0,0-0-0',
    btn1009 TEXT DEFAULT '10,0,0-0-0',
    btn1010 TEXT DEFAULT '10,0,0-0-0',
    btn1011 TEXT DEFAULT '10,0,0-0-0',
    btn1012 TEXT DEFAULT '10,0,0-0-0'
);

-- One row a Schema: the D-pad on the three layers.
CREATE TABLE tblSteuerKreuz (
    Schemaname TEXT NOT NULL PRIMARY KEY,
    Oben TEXT DEFAULT '10,0,0-0-0',
    Rechts TEXT DEFAULT '10,0,0-0-0',
    Unten TEXT DEFAULT '10,0,0-0-0',
    Links TEXT DEFAULT '10,0,0-0-0',
    Oben2 TEXT DEFAULT '10,0,0-0-0',
    Rechts2 TEXT DEFAULT '10,0,0-0-0',
    Unten2 TEXT DEFAULT '10,0,0-0-0',
    Links2 TEXT DEFAULT '10,0,0-0-0',
    Oben3 TEXT DEFAULT '10,0,0-0-0',
    Rechts3 TEXT DEFAULT '10,0,0-0-0',
    Unten3 TEXT DEFAULT '10,0,0-0-0',
    Links3 TEXT DEFAULT '10,0,0-0-0'
);

-- Twenty rows a Schema: the lines of the left stick on the three layers; row 20 keeps the mask of locked layers in
-- Links.
CREATE TABLE tblStick (
    Schemaname TEXT NOT NULL,
    "index" SMALLINT NOT NULL DEFAULT 0,
    Links INTEGER NOT NULL DEFAULT 0,
    Rechts INTEGER NOT NULL DEFAULT 0,
    Oben INTEGER NOT NULL DEFAULT 0,
    Unten INTEGER NOT NULL DEFAULT 0,
    Links2 INTEGER NOT NULL DEFAULT 0,
    Rechts2 INTEGER NOT NULL DEFAULT 0,
    Oben2 INTEGER NOT NULL DEFAULT 0,
    Unten2 INTEGER NOT NULL DEFAULT 0,
    Links3 INTEGER NOT NULL DEFAULT 0,
    Rechts3 INTEGER NOT NULL DEFAULT 0,
    Oben3 INTEGER NOT NULL DEFAULT 0,
    Unten3 INTEGER NOT NULL DEFAULT 0,
    UNIQUE (Schemaname, "index")
);

-- The same for the right stick.
CREATE TABLE tblStickR (
    Schemaname TEXT NOT NULL,
    "index" SMALLINT NOT NULL DEFAULT 0,
    Links INTEGER NOT NULL DEFAULT 0,
    Rechts INTEGER NOT NULL DEFAULT 0,
    Oben INTEGER NOT NULL DEFAULT 0,
    Unten INTEGER NOT NULL DEFAULT 0,
    Links2 INTEGER NOT NULL DEFAULT 0,
    Rechts2 INTEGER NOT NULL DEFAULT 0,
    Oben2 INTEGER NOT NULL DEFAULT 0,
    Unten2 INTEGER NOT NULL DEFAULT 0,
    Links3 INTEGER NOT NULL DEFAULT 0,
    Rechts3 INTEGER NOT NULL DEFAULT 0,
    Oben3 INTEGER NOT NULL DEFAULT 0,
    Unten3 INTEGER NOT NULL DEFAULT 0,
    UNIQUE (Schemaname, "index")
);

-- The actions of the fields of the left stick, any number of rows a Schema.
CREATE TABLE tblStickAktion (
    Schemaname TEXT NOT NULL,
    Umschalt SMALLINT NOT NULL DEFAULT 0,
    Links INTEGER NOT NULL DEFAULT 0,
    Rechts INTEGER NOT NULL DEFAULT 0,
    Oben INTEGER NOT NULL DEFAULT 0,
    Unten INTEGER NOT NULL DEFAULT 0,
    Aktion TEXT
);
CREATE INDEX tblStickAktion_Ebene ON tblStickAktion (Schemaname, Umschalt);

-- The same for the right stick.
CREATE TABLE tblStickAktionR (
    Schemaname TEXT NOT NULL,
    Umschalt SMALLINT NOT NULL DEFAULT 0,
    Links INTEGER NOT NULL DEFAULT 0,
    Rechts INTEGER NOT NULL DEFAULT 0,
    Oben INTEGER NOT NULL DEFAULT 0,
    Unten INTEGER NOT NULL DEFAULT 0,
    Aktion TEXT
);
CREATE INDEX tblStickAktionR_Ebene ON tblStickAktionR (Schemaname, Umschalt);

-- Sensitivity of the left stick, a row a Schema. Its numbers are empty until the first run of the Schema has ended.
CREATE TABLE Sensible (
    Schemaname TEXT NOT NULL,
    Fenster_ly SMALLINT,
    Fenster_lx SMALLINT,
    Mindestzahl_ly SMALLINT,
    Mindestzahl_lx SMALLINT,
    Rand_ly SMALLINT,
    Rand_lx SMALLINT,
    Wiederholung SMALLINT
);
CREATE INDEX Sensible_Schema ON Sensible (Schemaname);

-- The same for the right stick.
CREATE TABLE SensibleR (
    Schemaname TEXT NOT NULL,
    Fenster_rx SMALLINT,
    Fenster_ry SMALLINT,
    Mindestzahl_rx SMALLINT,
    Mindestzahl_ry SMALLINT,
    Rand_rx SMALLINT,
    Rand_ry SMALLINT
);
CREATE INDEX SensibleR_Schema ON SensibleR (Schemaname);

-- Key codes as decimal text and the names that the user sees. The rows stand in tasten.sql.
CREATE TABLE tblKeyCode (
    Keyc TEXT NOT NULL PRIMARY KEY,
    Keye TEXT NOT NULL UNIQUE
);
