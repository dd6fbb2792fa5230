-- SPDX-License-Identifier: GPL-3.0-or-later
-- The names of the keys, as a German keyboard labels them. Code and name are each unique. What is new here reaches
-- databases that are there already through tasten_nachtrag.sql, where a mended name needs a line.

-- The keys around the letters
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('3', 'Abbruch'),
    ('8', 'Rück'),
    ('9', 'Tab'),
    ('12', 'Leeren'),
    ('13', 'Enter'),
    ('16', 'Umschalt'),
    ('17', 'Strg'),
    ('18', 'Alt'),
    ('19', 'Pause'),
    ('20', 'Feststell'),
    ('27', 'Esc'),
    ('32', 'Leertaste');

-- Movement and editing
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('33', 'Bild auf'),
    ('34', 'Bild ab'),
    ('35', 'Ende'),
    ('36', 'Pos1'),
    ('37', 'Pfeil links'),
    ('38', 'Pfeil auf'),
    ('39', 'Pfeil rechts'),
    ('40', 'Pfeil ab'),
    ('41', 'Auswahl'),
    ('42', 'Drucken'),
    ('43', 'Ausführen'),
    ('44', 'Druck'),
    ('45', 'Einfg'),
    ('46', 'Entf'),
    ('47', 'Hilfe');

-- Digits
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('48', '0'),
    ('49', '1'),
    ('50', '2'),
    ('51', '3'),
    ('52', '4'),
    ('53', '5'),
    ('54', '6'),
    ('55', '7'),
    ('56', '8'),
    ('57', '9');

-- Letters
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('65', 'A'),
    ('66', 'B'),
    ('67', 'C'),
    ('68', 'D'),
    ('69', 'E'),
    ('70', 'F'),
    ('71', 'G'),
    ('72', 'H'),
    ('73', 'I'),
    ('74', 'J'),
    ('75', 'K'),
    ('76', 'L'),
    ('77', 'M'),
    ('78', 'N'),
    ('79', 'O'),
    ('80', 'P'),
    ('81', 'Q'),
    ('82', 'R'),
    ('83', 'S'),
    ('84', 'T'),
    ('85', 'U'),
    ('86', 'V'),
    ('87', 'W'),
    ('88', 'X'),
    ('89', 'Y'),
    ('90', 'Z');

-- Windows, menu and power keys
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('91', 'Win links'),
    ('92', 'Win rechts'),
    ('93', 'Menü'),
    ('95', 'Standby');

-- Number pad
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('96', 'Num 0'),
    ('97', 'Num 1'),
    ('98', 'Num 2'),
    ('99', 'Num 3'),
    ('100', 'Num 4'),
    ('101', 'Num 5'),
    ('102', 'Num 6'),
    ('103', 'Num 7'),
    ('104', 'Num 8'),
    ('105', 'Num 9'),
    ('106', 'Num *'),
    ('107', 'Num +'),
    ('108', 'Num Trenner'),
    ('109', 'Num -'),
    ('110', 'Num ,'),
    ('111', 'Num /'),
    ('146', 'Num =');

-- Function keys
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('112', 'F1'),
    ('113', 'F2'),
    ('114', 'F3'),
    ('115', 'F4'),
    ('116', 'F5'),
    ('117', 'F6'),
    ('118', 'F7'),
    ('119', 'F8'),
    ('120', 'F9'),
    ('121', 'F10'),
    ('122', 'F11'),
    ('123', 'F12'),
    ('124', 'F13'),
    ('125', 'F14'),
    ('126', 'F15'),
    ('127', 'F16'),
    ('128', 'F17'),
    ('129', 'F18'),
    ('130', 'F19'),
    ('131', 'F20'),
    ('132', 'F21'),
    ('133', 'F22'),
    ('134', 'F23'),
    ('135', 'F24');

-- Locks
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('144', 'Num Feststell'),
    ('145', 'Rollen');

-- Left and right of the shifting keys
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('160', 'Links Umschalt'),
    ('161', 'Rechts Umschalt'),
    ('162', 'Links Strg'),
    ('163', 'Rechts Strg'),
    ('164', 'Links Alt'),
    ('165', 'Alt Gr');

-- Browser and media keys
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('166', 'Browser zurück'),
    ('167', 'Browser vor'),
    ('168', 'Browser aktualisieren'),
    ('169', 'Browser abbrechen'),
    ('170', 'Browser Suche'),
    ('171', 'Browser Favoriten'),
    ('172', 'Browser Startseite'),
    ('173', 'Ton aus'),
    ('174', 'Leiser'),
    ('175', 'Lauter'),
    ('176', 'Nächster Titel'),
    ('177', 'Voriger Titel'),
    ('178', 'Medien Stopp'),
    ('179', 'Wiedergabe'),
    ('180', 'E-Mail'),
    ('181', 'Medienauswahl'),
    ('182', 'Programm 1'),
    ('183', 'Programm 2'),
    ('250', 'Abspielen'),
    ('251', 'Zoom');

-- The one key that the Brazilian and the Japanese keyboard have beyond the German one
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('193', 'Ro');

-- What the German keyboard has where others have other marks
INSERT INTO tblKeyCode (Keyc, Keye) VALUES
    ('186', 'Ü'),
    ('187', '+'),
    ('188', ','),
    ('189', '-'),
    ('190', '.'),
    ('191', '#'),
    ('192', 'Ö'),
    ('219', 'ß'),
    ('220', '^'),
    ('221', '´'),
    ('222', 'Ä'),
    ('226', '<');
