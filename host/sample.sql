-- The embedded host's database: its schema and two sample companies, all invented. The host runs this script
-- into a new file on first use; sqlite3 host.sqlite < sample.sql does the same by hand.
--
-- Rules of the schema: tables carry the names that the host's components know them by. Whatever belongs to
-- one company's ledger is keyed by BookCode first, so that one file holds the books of all companies;
-- whatever describes the company itself is keyed by CompanyCode. Codes are text and compared exactly.

PRAGMA user_version = 1;  -- raised with every change of the schema; the host refuses any other version

CREATE TABLE Company (
  Code    TEXT NOT NULL PRIMARY KEY,  -- registration code: 9 digits, the last a check digit
  VATCode TEXT NOT NULL,              -- "LT" and 12 digits, the last a check digit; empty when no VAT payer
  Name    TEXT NOT NULL
) STRICT;

CREATE TABLE Book (
  Code        TEXT NOT NULL PRIMARY KEY,  -- what CreateBook is called with
  Name        TEXT NOT NULL,
  CompanyCode TEXT NOT NULL REFERENCES Company (Code)
) STRICT;

CREATE TABLE Address (
  CompanyCode TEXT NOT NULL REFERENCES Company (Code),
  Kind        TEXT NOT NULL,  -- '' the company's own address, 'SAND' warehouse
  Street      TEXT NOT NULL,
  PostCode    TEXT NOT NULL,
  Town        TEXT NOT NULL,
  PRIMARY KEY (CompanyCode, Kind)
) STRICT;

CREATE TABLE Contact (
  CompanyCode TEXT NOT NULL,
  AddressKind TEXT NOT NULL,
  Kind        TEXT NOT NULL,  -- 'TEL' telephone, 'FA' fax, 'EL' e-mail
  Value       TEXT NOT NULL,
  PRIMARY KEY (CompanyCode, AddressKind, Kind),
  FOREIGN KEY (CompanyCode, AddressKind) REFERENCES Address (CompanyCode, Kind)
) STRICT;

CREATE TABLE ResponsiblePerson (
  CompanyCode TEXT NOT NULL REFERENCES Company (Code),
  Role        TEXT NOT NULL,  -- 'DIR' head of the company, 'FDIR' chief accountant
  FullName    TEXT NOT NULL,
  PRIMARY KEY (CompanyCode, Role)
) STRICT;

CREATE TABLE PathKey (
  Code     TEXT NOT NULL,             -- 'BookRepSave' reports archive
  BookCode TEXT NOT NULL DEFAULT '',  -- '' for every book that has no folder of its own
  Folder   TEXT NOT NULL,
  PRIMARY KEY (Code, BookCode)
) STRICT;

INSERT INTO Company (Code, VATCode, Name) VALUES
  ('398417265', 'LT100099172410', 'UAB „Medvilnės namai“'),
  ('399503183', 'LT100099368516', 'AB „Baltijos žvejų krantinė“');

INSERT INTO Book (Code, Name, CompanyCode) VALUES
  ('MEDVILNE', 'Medvilnės namai', '398417265'),
  ('BALTIJA', 'Baltijos žvejų krantinė', '399503183');

INSERT INTO Address (CompanyCode, Kind, Street, PostCode, Town) VALUES
  ('398417265', '', 'Audėjų g. 14-3', 'LT-44177', 'Kaunas'),
  ('398417265', 'SAND', 'Verpėjų g. 2B', 'LT-44178', 'Kaunas'),
  ('399503183', '', 'Krantinės g. 7', 'LT-91246', 'Klaipėda');

INSERT INTO Contact (CompanyCode, AddressKind, Kind, Value) VALUES
  ('398417265', '', 'TEL', '+370 37 000 112'),
  ('398417265', '', 'FA', '+370 37 000 113'),
  ('398417265', '', 'EL', 'info@medvilnesnamai.example'),
  ('398417265', 'SAND', 'TEL', '+370 37 000 118'),
  ('399503183', '', 'TEL', '+370 46 000 240'),
  ('399503183', '', 'EL', 'rastine@zvejukrantine.example');

INSERT INTO ResponsiblePerson (CompanyCode, Role, FullName) VALUES
  ('398417265', 'DIR', 'Rūta Žiedaitė'),
  ('398417265', 'FDIR', 'Šarūnas Įkalnis'),
  ('399503183', 'DIR', 'Česlovas Ąžuolas'),
  ('399503183', 'FDIR', 'Ūla Eglė Vėjūnienė');

INSERT INTO PathKey (Code, BookCode, Folder) VALUES
  ('BookRepSave', '', 'C:\Ataskaitos\Archyvas'),
  ('BookRepSave', 'BALTIJA', 'C:\Ataskaitos\Baltija'),
  ('BookForms', '', 'C:\Ataskaitos\Formos');
