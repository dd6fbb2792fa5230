-- SPDX-License-Identifier: GPL-3.0-or-later
-- The Schema that the pad is played with. Buttons are named by the pad of tests/wayland/Hand.cpp.
BEGIN;
INSERT INTO tblTastatur (Schemaname,
    btn1,                                 -- Y: a key that only a German layout has
    btn2, btn3,                           -- B and A: the two that change places between QWERTY and QWERTZ
    btn4,                                 -- X: the shift key of a keyboard
    btn6, btn8,                           -- L 1: shift key 1; R 1: shift key 2, latched
    btn103, btn1003,                      -- A on their layers
    btn9, btn10, btn11, btn12)            -- Select, Start: the wheel; L-Stick, R-Stick: mouse buttons
VALUES ('S', '1,186,0-0-0', '1,89,0-0-0', '1,90,0-0-0', '1,16,0-0-0', '3,0,0-0-0', '4,0,1-0-0',
    '1,66,0-0-0', '1,67,0-0-0', '5,0,3-0-0', '5,0,4-0-0', '5,0,0-0-0', '5,0,1-0-0');
INSERT INTO tblSteuerKreuz (Schemaname, Oben, Rechts, Unten, Links)
VALUES ('S', '1,38,0-0-0', '1,39,0-0-0', '1,40,0-0-0', '1,37,0-0-0');
-- Not smoothed: a pixel is a pixel.
INSERT INTO Sensible VALUES ('S', 1, 1, 0, 0, 0, 0, 0);
INSERT INTO SensibleR VALUES ('S', 1, 1, 0, 0, 0, 0);
-- Fields of the lines that a Schema begins with. The left stick moves the pointer; the right one places it to the right,
-- and to the left centres it, turns the wheel upward, types downward.
INSERT INTO tblStickAktion VALUES
    ('S', 0, 27072, 0, 0, 0, '0,0,5,20'), ('S', 0, 0, 38399, 0, 0, '0,1,5,20'),
    ('S', 0, 0, 0, 25941, 0, '0,2,5,20'), ('S', 0, 0, 0, 0, 39679, '0,3,5,20');
INSERT INTO tblStickAktionR VALUES
    ('S', 0, 27072, 0, 0, 0, '5,0'), ('S', 0, 0, 38399, 0, 0, '5,1'),
    ('S', 0, 0, 0, 25941, 0, '1,3,120'), ('S', 0, 0, 0, 0, 39679, '2,0,65,0,0');
COMMIT;
