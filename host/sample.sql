-- The embedded host's database: its schema and two sample companies, all invented. The host runs this script
-- into a new file on first use; sqlite3 host.sqlite < sample.sql does the same by hand.
--
-- Rules of the schema: tables carry the names that the host's components know them by. Whatever belongs to
-- one company's ledger is keyed by BookCode first, so that one file holds the books of all companies - but for
-- documents, whose numbers are unique over all books; whatever describes the company itself is keyed by
-- CompanyCode. Codes are text and compared exactly. Flags are 0 or 1, dates texts 'YYYY-MM-DD'.

PRAGMA user_version = 2;  -- raised with every change of the schema; the host refuses any other version

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

CREATE TABLE GLAccountSet (
  BookCode TEXT NOT NULL REFERENCES Book (Code),
  Code     TEXT NOT NULL,
  Name     TEXT NOT NULL,
  IsBudget INTEGER NOT NULL CHECK (IsBudget IN (0, 1)),  -- whether the set is for budgets
  PRIMARY KEY (BookCode, Code)
) STRICT;

CREATE TABLE REFBankAccountRole (
  BookCode TEXT NOT NULL REFERENCES Book (Code),
  Code     TEXT NOT NULL,
  Name     TEXT NOT NULL,
  PRIMARY KEY (BookCode, Code)
) STRICT;

CREATE TABLE DocumentType (
  Code TEXT NOT NULL PRIMARY KEY,  -- 'BOBN' budget document
  Name TEXT NOT NULL               -- of its documents together: the title of their selection list
) STRICT;

CREATE TABLE THDocument (
  IDC         INTEGER NOT NULL PRIMARY KEY CHECK (IDC BETWEEN 1 AND 2147483647),
  BookCode    TEXT NOT NULL REFERENCES Book (Code),
  DocTypeCode TEXT NOT NULL REFERENCES DocumentType (Code),
  Code        TEXT NOT NULL,
  DocDate     TEXT NOT NULL CHECK (DocDate IS date(DocDate, '+0 days')),
  Name        TEXT NOT NULL,
  UNIQUE (BookCode, DocTypeCode, Code),
  UNIQUE (BookCode, IDC)
) STRICT;

CREATE TABLE GLPosting (
  BookCode    TEXT NOT NULL,
  DocId       INTEGER NOT NULL,
  Line        INTEGER NOT NULL,  -- of the document, from 1
  AccSetCode  TEXT NOT NULL,
  AccountCode TEXT NOT NULL,
  Amount      INTEGER NOT NULL,  -- in cents
  PRIMARY KEY (BookCode, DocId, Line),
  FOREIGN KEY (BookCode, DocId) REFERENCES THDocument (BookCode, IDC),
  FOREIGN KEY (BookCode, AccSetCode) REFERENCES GLAccountSet (BookCode, Code)
) STRICT;

CREATE INDEX GLPostingByAccountSet ON GLPosting (AccSetCode, DocId);

CREATE VIEW GLContAccountPostBBN AS
  SELECT BookCode, DocId, Line, AccSetCode, AccountCode, Amount FROM GLPosting;

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

INSERT INTO GLAccountSet (BookCode, Code, Name, IsBudget) VALUES
  ('MEDVILNE', 'PAGR', 'Pagrindinis sąskaitų planas', 0),
  ('MEDVILNE', 'BIUDZ', 'Biudžeto sąskaitų planas', 1),
  ('MEDVILNE', 'GAMYBA', 'Gamybos padalinio biudžetas', 1),
  ('MEDVILNE', 'O''BRIEN', 'Padalinio „O''Brien“ biudžetas', 1),
  ('BALTIJA', 'PAGR', 'Pagrindinis sąskaitų planas', 0),
  ('BALTIJA', 'BIUDZ', 'Biudžeto sąskaitų planas', 1),
  ('BALTIJA', 'ŽVEJYBA', 'Žvejybos sezono biudžetas', 1);

INSERT INTO REFBankAccountRole (BookCode, Code, Name) VALUES
  ('MEDVILNE', 'ATSK', 'Atsiskaitomoji sąskaita'),
  ('MEDVILNE', 'DU', 'Darbo užmokesčio sąskaita'),
  ('BALTIJA', 'ATSK', 'Atsiskaitomoji sąskaita');

INSERT INTO DocumentType (Code, Name) VALUES
  ('BOBN', 'Biudžeto dokumentai'),
  ('GLOP', 'Didžiosios knygos operacijos'),
  ('PVSF', 'Pardavimo sąskaitos faktūros');

-- Of the budget documents, 104 has postings on one account set alone and 106, a draft, on none.
INSERT INTO THDocument (IDC, BookCode, DocTypeCode, Code, DocDate, Name) VALUES
  (101, 'MEDVILNE', 'BOBN', 'BIU-2023-01', '2023-01-01', '2023 metų biudžetas'),
  (102, 'MEDVILNE', 'BOBN', 'BIU-2024-01', '2024-01-01', '2024 metų biudžetas'),
  (103, 'MEDVILNE', 'BOBN', 'BIU-2024-02', '2024-07-01', '2024 metų II pusmečio patikslinimas'),
  (104, 'MEDVILNE', 'BOBN', 'BIU-2024-03', '2024-12-31', 'Gamybos padalinio papildomas biudžetas'),
  (105, 'MEDVILNE', 'BOBN', 'BIU-2025-01', '2025-01-01', '2025 metų biudžetas'),
  (106, 'MEDVILNE', 'BOBN', 'BIU-2025-02', '2025-10-01', '2025 metų patikslinimo juodraštis'),
  (107, 'MEDVILNE', 'BOBN', 'BIU-2026-01', '2026-01-01', '2026 metų biudžetas'),
  (108, 'MEDVILNE', 'GLOP', 'BO-2024-001', '2024-01-31', 'Biudžeto likučių perkėlimas'),
  (109, 'MEDVILNE', 'PVSF', 'PS-2024-0117', '2024-03-15', 'Lininių užuolaidų pardavimas'),
  (201, 'BALTIJA', 'BOBN', 'BIU-2023-01', '2023-01-01', '2023 metų biudžetas'),
  (202, 'BALTIJA', 'BOBN', 'BIU-2024-01', '2024-01-01', '2024 metų biudžetas'),
  (203, 'BALTIJA', 'BOBN', 'BIU-2024-02', '2024-04-01', 'Strimelių sezono biudžetas'),
  (204, 'BALTIJA', 'BOBN', 'BIU-2025-01', '2025-01-01', '2025 metų biudžetas'),
  (205, 'BALTIJA', 'BOBN', 'BIU-2026-01', '2026-01-01', '2026 metų biudžetas'),
  (206, 'BALTIJA', 'GLOP', 'BO-2024-001', '2024-02-29', 'Vasario mėnesio sąnaudos');

INSERT INTO GLPosting (BookCode, DocId, Line, AccSetCode, AccountCode, Amount) VALUES
  ('MEDVILNE', 101, 1, 'BIUDZ', '5000', 41200000),
  ('MEDVILNE', 101, 2, 'BIUDZ', '6000', -30150000),
  ('MEDVILNE', 102, 1, 'BIUDZ', '5000', 45800000),
  ('MEDVILNE', 102, 2, 'BIUDZ', '6000', -33400000),
  ('MEDVILNE', 102, 3, 'O''BRIEN', '5000', 2750000),
  ('MEDVILNE', 103, 1, 'BIUDZ', '6000', -1250000),
  ('MEDVILNE', 104, 1, 'GAMYBA', '6000', -480000),
  ('MEDVILNE', 105, 1, 'BIUDZ', '5000', 48100000),
  ('MEDVILNE', 105, 2, 'GAMYBA', '6000', -36900000),
  ('MEDVILNE', 107, 1, 'BIUDZ', '5000', 50300000),
  ('MEDVILNE', 107, 2, 'GAMYBA', '6000', -38200000),
  ('MEDVILNE', 107, 3, 'O''BRIEN', '5000', 3100000),
  ('MEDVILNE', 108, 1, 'BIUDZ', '3900', 1104500),
  ('MEDVILNE', 108, 2, 'PAGR', '3900', -1104500),
  ('MEDVILNE', 109, 1, 'PAGR', '5000', 36300),
  ('BALTIJA', 201, 1, 'BIUDZ', '5000', 88000000),
  ('BALTIJA', 202, 1, 'BIUDZ', '5000', 91500000),
  ('BALTIJA', 203, 1, 'ŽVEJYBA', '5000', 12400000),
  ('BALTIJA', 204, 1, 'BIUDZ', '5000', 94000000),
  ('BALTIJA', 204, 2, 'ŽVEJYBA', '5000', 13000000),
  ('BALTIJA', 205, 1, 'BIUDZ', '5000', 97200000),
  ('BALTIJA', 206, 1, 'PAGR', '6000', -215000);
