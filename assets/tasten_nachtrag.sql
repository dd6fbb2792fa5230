-- SPDX-License-Identifier: GPL-3.0-or-later
-- Brings the key names of this version into a database that an older one has laid; the new empty database is
-- attached as `neu`. What the user's database names otherwise keeps its name.
--
-- A name that is mended in tasten.sql gets a line here, which changes it where the old one still stands:
--     UPDATE OR IGNORE main.tblKeyCode SET Keye = 'new' WHERE Keyc = 'code' AND Keye = 'old';
BEGIN IMMEDIATE;
INSERT OR IGNORE INTO main.tblKeyCode (Keyc, Keye) SELECT Keyc, Keye FROM neu.tblKeyCode ORDER BY rowid;
COMMIT;
