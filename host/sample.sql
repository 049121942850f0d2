-- The embedded host's database: its schema and two sample companies, all invented. The host runs this script
-- into a new file on first use; sqlite3 host.sqlite < sample.sql does the same by hand.
--
-- Rules of the schema: tables carry the names that the host's components know them by. Whatever belongs to
-- one company's ledger is keyed by BookCode first, so that one file holds the books of all companies - but for
-- documents, whose numbers are unique over all books; whatever describes the company itself is keyed by
-- CompanyCode. Codes are text and compared exactly. Flags are 0 or 1, dates texts 'YYYY-MM-DD'.

PRAGMA user_version = 3;  -- raised with every change of the schema; the host refuses any other version

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

-- The same as books give it out. Code: document/line.
CREATE VIEW GLDocumentPosting AS
  SELECT BookCode, DocId || '/' || Line AS Code, DocId, AccSetCode, AccountCode, Amount FROM GLPosting;

-- The general ledger. An entry debits one account and credits another, so that every ledger balances.

CREATE TABLE GLAccount (
  BookCode TEXT NOT NULL REFERENCES Book (Code),
  Code     TEXT NOT NULL,  -- 1 to 2 assets, 3 equity, 4 liabilities, 5 income, 6 expenses
  Name     TEXT NOT NULL,
  PRIMARY KEY (BookCode, Code)
) STRICT;

CREATE TABLE VATClass (
  Code TEXT NOT NULL PRIMARY KEY,  -- of the register of invoices
  Rate INTEGER NOT NULL,           -- per cent
  Name TEXT NOT NULL
) STRICT;

CREATE TABLE GLEntry (
  Id            INTEGER NOT NULL PRIMARY KEY,
  BookCode      TEXT NOT NULL REFERENCES Book (Code),
  EntryDate     TEXT NOT NULL CHECK (EntryDate IS date(EntryDate, '+0 days')),
  Kind          TEXT NOT NULL CHECK (Kind IN ('PRAD', 'OPER', 'UZD')),  -- opening, operation, closing of a year
  DebitAccount  TEXT NOT NULL,
  CreditAccount TEXT NOT NULL CHECK (CreditAccount <> DebitAccount),
  Amount        INTEGER NOT NULL CHECK (Amount > 0),  -- in cents, without VAT
  VATClassCode  TEXT REFERENCES VATClass (Code),      -- of a sale or purchase
  VATAmount     INTEGER NOT NULL DEFAULT 0,           -- in cents; its own entries post it
  Name          TEXT NOT NULL,
  FOREIGN KEY (BookCode, DebitAccount) REFERENCES GLAccount (BookCode, Code),
  FOREIGN KEY (BookCode, CreditAccount) REFERENCES GLAccount (BookCode, Code)
) STRICT;

-- Turnovers of each account by month. What closes a year stands apart, since it empties the accounts of
-- income and expenses: balances count it, a statement of profit does not. Code: account/month, with "U" at the
-- end of the closing's.
CREATE VIEW GLAccountMonth AS
  SELECT BookCode, AccountCode || '/' || substr(Month, 1, 7) || iif(IsClosing, 'U', '') AS Code,
         AccountCode, Month, IsClosing, sum(Debit) AS Debit, sum(Credit) AS Credit
  FROM (SELECT BookCode, DebitAccount AS AccountCode, date(EntryDate, 'start of month') AS Month,
               Kind = 'UZD' AS IsClosing, Amount AS Debit, 0 AS Credit FROM GLEntry
        UNION ALL
        SELECT BookCode, CreditAccount, date(EntryDate, 'start of month'), Kind = 'UZD', 0, Amount FROM GLEntry)
  GROUP BY BookCode, AccountCode, Month, IsClosing;

-- The registers of invoices by month. Code: month/class, with "P" at the end of the purchases'.
CREATE VIEW VATMonth AS
  SELECT BookCode, substr(Month, 1, 7) || '/' || VATClassCode || iif(IsSale, '', 'P') AS Code, Month,
         VATClassCode, IsSale, sum(Amount) AS Base, sum(VATAmount) AS VATAmount
  FROM (SELECT BookCode, date(EntryDate, 'start of month') AS Month, VATClassCode,
               CreditAccount LIKE '5%' AS IsSale, Amount, VATAmount
        FROM GLEntry WHERE VATClassCode IS NOT NULL)
  GROUP BY BookCode, Month, VATClassCode, IsSale;

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
  ('MEDVILNE', 102, 1, 'BIUDZ', '5000', 31200000),
  ('MEDVILNE', 102, 2, 'BIUDZ', '6000', -28150000),
  ('MEDVILNE', 102, 3, 'O''BRIEN', '5000', 2750000),
  ('MEDVILNE', 102, 4, 'BIUDZ', '5001', 9000000),
  ('MEDVILNE', 102, 5, 'BIUDZ', '5002', 3900000),
  ('MEDVILNE', 102, 6, 'BIUDZ', '5010', 2700000),
  ('MEDVILNE', 102, 7, 'BIUDZ', '6010', -1180000),
  ('MEDVILNE', 102, 8, 'BIUDZ', '6100', -4500000),
  ('MEDVILNE', 102, 9, 'BIUDZ', '6300', -10200000),
  ('MEDVILNE', 102, 10, 'BIUDZ', '5400', 500000),
  ('MEDVILNE', 102, 11, 'BIUDZ', '6400', -70000),
  ('MEDVILNE', 102, 12, 'BIUDZ', '5800', 20000),
  ('MEDVILNE', 102, 13, 'BIUDZ', '6800', -850000),
  ('MEDVILNE', 102, 14, 'BIUDZ', '6900', -355500),
  ('MEDVILNE', 103, 1, 'BIUDZ', '6000', -1250000),
  ('MEDVILNE', 104, 1, 'GAMYBA', '6000', -480000),
  ('MEDVILNE', 105, 1, 'BIUDZ', '5000', 33000000),
  ('MEDVILNE', 105, 2, 'GAMYBA', '6000', -29600000),
  ('MEDVILNE', 105, 3, 'BIUDZ', '5001', 9900000),
  ('MEDVILNE', 105, 4, 'BIUDZ', '5002', 4100000),
  ('MEDVILNE', 105, 5, 'BIUDZ', '5010', 3000000),
  ('MEDVILNE', 105, 6, 'GAMYBA', '6010', -1240000),
  ('MEDVILNE', 105, 7, 'BIUDZ', '6100', -4800000),
  ('MEDVILNE', 105, 8, 'BIUDZ', '6300', -10400000),
  ('MEDVILNE', 105, 9, 'BIUDZ', '5400', 500000),
  ('MEDVILNE', 105, 10, 'BIUDZ', '6400', -72000),
  ('MEDVILNE', 105, 11, 'BIUDZ', '5800', 20000),
  ('MEDVILNE', 105, 12, 'BIUDZ', '6800', -820000),
  ('MEDVILNE', 105, 13, 'BIUDZ', '6900', -574000),
  ('MEDVILNE', 107, 1, 'BIUDZ', '5000', 50300000),
  ('MEDVILNE', 107, 2, 'GAMYBA', '6000', -38200000),
  ('MEDVILNE', 107, 3, 'O''BRIEN', '5000', 3100000),
  ('MEDVILNE', 108, 1, 'BIUDZ', '3900', 1104500),
  ('MEDVILNE', 108, 2, 'PAGR', '3900', -1104500),
  ('MEDVILNE', 109, 1, 'PAGR', '5000', 36300),
  ('BALTIJA', 201, 1, 'BIUDZ', '5000', 88000000),
  ('BALTIJA', 202, 1, 'BIUDZ', '5000', 66000000),
  ('BALTIJA', 202, 2, 'BIUDZ', '6000', -60000000),
  ('BALTIJA', 203, 1, 'ŽVEJYBA', '5000', 12400000),
  ('BALTIJA', 204, 1, 'BIUDZ', '5000', 70000000),
  ('BALTIJA', 204, 2, 'ŽVEJYBA', '5000', 13000000),
  ('BALTIJA', 204, 3, 'BIUDZ', '6000', -64000000),
  ('BALTIJA', 205, 1, 'BIUDZ', '5000', 97200000),
  ('BALTIJA', 206, 1, 'PAGR', '6000', -215000);

-- The general ledger of both companies: opening balances at the end of 2023, two years of operations with
-- VAT, and the closing of each year.

INSERT INTO GLAccount (BookCode, Code, Name)
  SELECT Book.Code, column1, column2 FROM Book CROSS JOIN (VALUES
    ('1130', 'Programinė įranga'),
    ('1138', 'Programinės įrangos amortizacija (–)'),
    ('1211', 'Pastatai ir statiniai'),
    ('1217', 'Pastatų ir statinių nusidėvėjimas (–)'),
    ('1221', 'Mašinos ir įranga'),
    ('1227', 'Mašinų ir įrangos nusidėvėjimas (–)'),
    ('1231', 'Transporto priemonės'),
    ('1237', 'Transporto priemonių nusidėvėjimas (–)'),
    ('1241', 'Kita įranga, prietaisai ir įrankiai'),
    ('1247', 'Kitos įrangos nusidėvėjimas (–)'),
    ('1640', 'Po vienų metų gautinos sumos'),
    ('2010', 'Žaliavos, medžiagos ir komplektavimo detalės'),
    ('2030', 'Produkcija'),
    ('2080', 'Sumokėti avansai už atsargas'),
    ('2410', 'Pirkėjų skolos'),
    ('2441', 'Gautinas pridėtinės vertės mokestis'),
    ('2710', 'Sąskaitos bankuose'),
    ('2720', 'Kasa'),
    ('2910', 'Ateinančių laikotarpių sąnaudos'),
    ('3011', 'Paprastosios akcijos'),
    ('3310', 'Privalomasis rezervas'),
    ('3411', 'Ataskaitinių metų pelnas (nuostoliai)'),
    ('3412', 'Ankstesnių metų pelnas (nuostoliai)'),
    ('3900', 'Suvestinė sąskaita'),
    ('4000', 'Dotacijos, subsidijos'),
    ('4100', 'Pensijų ir panašių įsipareigojimų atidėjiniai'),
    ('4210', 'Ilgalaikės skolos kredito įstaigoms'),
    ('4400', 'Ilgalaikių skolų einamųjų metų dalis'),
    ('4420', 'Gauti avansai'),
    ('4430', 'Skolos tiekėjams'),
    ('4470', 'Pelno mokesčio įsipareigojimai'),
    ('4480', 'Mokėtinas darbo užmokestis'),
    ('4481', 'Mokėtinos socialinio draudimo įmokos ir gyventojų pajamų mokestis'),
    ('4492', 'Mokėtinas pridėtinės vertės mokestis'),
    ('4910', 'Sukauptos sąnaudos'),
    ('5000', 'Produkcijos pardavimo Lietuvoje pajamos'),
    ('5001', 'Produkcijos pardavimo ES pirkėjams pajamos'),
    ('5002', 'Produkcijos eksporto pajamos'),
    ('5010', 'Suteiktų paslaugų pajamos'),
    ('5400', 'Kitos veiklos pajamos'),
    ('5800', 'Palūkanų pajamos'),
    ('6000', 'Parduotos produkcijos savikaina'),
    ('6010', 'Suteiktų paslaugų savikaina'),
    ('6110', 'Pardavimo darbuotojų sąnaudos'),
    ('6120', 'Reklamos sąnaudos'),
    ('6130', 'Transportavimo sąnaudos'),
    ('6301', 'Patalpų nuomos ir priežiūros sąnaudos'),
    ('6302', 'Elektros ir šildymo sąnaudos'),
    ('6303', 'Ryšių ir biuro sąnaudos'),
    ('6304', 'Administracijos darbuotojų sąnaudos'),
    ('6305', 'Nusidėvėjimo ir amortizacijos sąnaudos'),
    ('6306', 'Nekilnojamojo turto mokesčio sąnaudos'),
    ('6309', 'Kitos bendrosios ir administracinės sąnaudos'),
    ('6400', 'Kitos veiklos sąnaudos'),
    ('6800', 'Palūkanų sąnaudos'),
    ('6900', 'Pelno mokesčio sąnaudos'));

INSERT INTO VATClass (Code, Rate, Name) VALUES
  ('PVM1', 21, 'Standartinis tarifas'),
  ('PVM5', 0, 'Neapmokestinami sandoriai'),
  ('PVM12', 0, 'Prekių eksportas'),
  ('PVM13', 0, 'Prekių tiekimas į kitas ES valstybes nares'),
  ('PVM16', 21, 'Prekių įsigijimas iš kitų ES valstybių narių');

-- Opening balances in euros: assets above, equity and liabilities, negative, below.
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, '2023-12-31', 'PRAD', iif(Euros > 0, Account, '3900'), iif(Euros > 0, '3900', Account),
         CAST(round(abs(Euros) * 100) AS INTEGER), 'Pradinis likutis'
  FROM (SELECT 'MEDVILNE' AS BookCode, column1 AS Account, column2 AS Euros FROM (VALUES
    ('1130', 12400.00), ('1138', -7900.00), ('1211', 486000.00), ('1217', -118800.00),
    ('1221', 214500.00), ('1227', -96240.00), ('1231', 48600.00), ('1237', -21870.00),
    ('1241', 23150.00), ('1247', -11420.00), ('1640', 6000.00), ('2010', 58420.35),
    ('2030', 84310.60), ('2080', 2150.00), ('2410', 46218.44), ('2710', 112640.87),
    ('2720', 1250.40), ('2910', 620.00),
    ('3011', -150000.00), ('3310', -12000.00), ('3411', -41385.20), ('3412', -367556.79),
    ('4000', -18400.00), ('4100', -7250.00), ('4210', -172000.00), ('4400', -18000.00),
    ('4430', -27914.62), ('4470', -7303.27), ('4480', -7421.15), ('4481', -4982.90),
    ('4492', -2604.33), ('4910', -3212.40))
  UNION ALL
  SELECT 'BALTIJA', column1, column2 FROM (VALUES
    ('1130', 21900.00), ('1138', -16450.00), ('1211', 1240000.00), ('1217', -402300.00),
    ('1221', 518000.00), ('1227', -261900.00), ('1231', 132400.00), ('1237', -66200.00),
    ('1241', 41250.00), ('1247', -18730.00), ('1640', 15000.00), ('2010', 96210.18),
    ('2030', 141905.77), ('2080', 4300.00), ('2410', 91377.05), ('2710', 236480.33),
    ('2720', 2118.90), ('2910', 1240.00),
    ('3011', -620000.00), ('3310', -62000.00), ('3411', -74290.61), ('3412', -458716.32),
    ('4000', -46500.00), ('4100', -15800.00), ('4210', -310000.00), ('4400', -37800.00),
    ('4430', -77365.44), ('4470', -13110.10), ('4480', -21480.30), ('4481', -14306.72),
    ('4492', -11884.04), ('4910', -13348.70)));

-- What repeats month by month, in euros of the first company; Scale tells how much larger the other is.
CREATE TEMP TABLE Scale (BookCode TEXT, Factor REAL);
INSERT INTO Scale VALUES ('MEDVILNE', 1.0), ('BALTIJA', 2.1);

CREATE TEMP TABLE Season (Number INTEGER, Sales REAL, Heating REAL);
INSERT INTO Season VALUES
  (1, 0.86, 1.55), (2, 0.84, 1.48), (3, 0.95, 1.25), (4, 0.98, 1.00), (5, 1.04, 0.72), (6, 1.06, 0.62),
  (7, 0.94, 0.60), (8, 0.97, 0.62), (9, 1.03, 0.78), (10, 1.08, 1.02), (11, 1.16, 1.22), (12, 1.09, 1.44);

CREATE TEMP TABLE Growth (Year INTEGER, Factor REAL);
INSERT INTO Growth VALUES (2024, 1.00), (2025, 1.06);

-- Follows: 'P' sales and growth, 'S' heating, 'A' growth, '' nothing.
CREATE TEMP TABLE Recurring (
  Number INTEGER PRIMARY KEY, Day TEXT, Debit TEXT, Credit TEXT, Euros REAL, Follows TEXT, VAT TEXT, Name TEXT);
INSERT INTO Recurring (Day, Debit, Credit, Euros, Follows, VAT, Name) VALUES
  ('05', '2410', '5000', 26400, 'P', 'PVM1', 'Produkcijos pardavimas Lietuvoje'),
  ('12', '2410', '5001', 7600, 'P', 'PVM13', 'Produkcijos pardavimas ES pirkėjams'),
  ('18', '2410', '5002', 3150, 'P', 'PVM12', 'Produkcijos eksportas'),
  ('24', '2410', '5010', 2350, 'P', 'PVM1', 'Suteiktos paslaugos'),
  ('02', '2410', '5400', 420, '', 'PVM5', 'Gyvenamųjų patalpų nuoma'),
  ('08', '2010', '4430', 11900, 'P', 'PVM1', 'Žaliavos iš Lietuvos tiekėjų'),
  ('14', '2010', '4430', 5600, 'P', 'PVM16', 'Žaliavos iš ES tiekėjų'),
  ('10', '6120', '4430', 640, 'P', 'PVM1', 'Reklama'),
  ('20', '6130', '4430', 890, 'P', 'PVM1', 'Prekių vežimas'),
  ('05', '6301', '4430', 850, '', 'PVM1', 'Patalpų nuoma ir priežiūra'),
  ('21', '6302', '4430', 1180, 'S', 'PVM1', 'Elektra ir šildymas'),
  ('15', '6303', '4430', 330, 'A', 'PVM1', 'Ryšiai ir biuro reikmenys'),
  ('18', '6309', '4430', 420, 'A', 'PVM1', 'Konsultacijos'),
  ('28', '2030', '2010', 17300, 'P', NULL, 'Žaliavos gamybai'),
  ('28', '2030', '4480', 5450, 'A', NULL, 'Gamybos darbuotojų darbo užmokestis'),
  ('28', '2030', '4481', 96.47, 'A', NULL, 'Darbdavio socialinio draudimo įmokos'),
  ('28', '2030', '1227', 585, '', NULL, 'Gamybos įrangos nusidėvėjimas'),
  ('28', '6000', '2030', 23300, 'P', NULL, 'Parduotos produkcijos savikaina'),
  ('28', '6010', '4480', 980, 'A', NULL, 'Paslaugas teikiančių darbuotojų darbo užmokestis'),
  ('28', '6110', '4480', 1980, 'A', NULL, 'Pardavimo darbuotojų darbo užmokestis'),
  ('28', '6130', '1237', 405, '', NULL, 'Transporto priemonių nusidėvėjimas'),
  ('28', '6304', '4480', 4350, 'A', NULL, 'Administracijos darbuotojų darbo užmokestis'),
  ('28', '6304', '4481', 129.39, 'A', NULL, 'Darbdavio socialinio draudimo įmokos'),
  ('28', '6305', '1217', 405, '', NULL, 'Pastatų nusidėvėjimas'),
  ('28', '6305', '1138', 75, '', NULL, 'Programinės įrangos amortizacija'),
  ('28', '6305', '1247', 160, '', NULL, 'Kitos įrangos nusidėvėjimas'),
  ('28', '4000', '6305', 150, '', NULL, 'Dotacijos panaudojimas'),
  ('28', '6309', '2910', 205, '', NULL, 'Turto draudimo sąnaudos'),
  ('25', '6306', '2710', 90, '', NULL, 'Nekilnojamojo turto mokestis'),
  ('03', '2720', '2710', 300, '', NULL, 'Gryni pinigai kasai'),
  ('27', '6309', '2720', 285, 'A', NULL, 'Smulkios ūkio išlaidos'),
  ('26', '6400', '2710', 60, '', NULL, 'Nuomojamų patalpų priežiūra'),
  ('28', '6800', '2710', 690, '', NULL, 'Palūkanos už paskolą'),
  ('28', '4400', '2710', 1500, '', NULL, 'Paskolos dalies grąžinimas'),
  ('28', '2710', '5800', 18, '', NULL, 'Banko palūkanos');

-- Every amount that follows something is a little off it, as amounts are.
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, VATClassCode, Name)
  SELECT BookCode, printf('%d-%02d-', Year, Season.Number) || Day, 'OPER', Debit, Credit,
         CAST(round(Euros * 100 * Scale.Factor * CASE Follows
           WHEN '' THEN 1
           ELSE CASE Follows WHEN 'P' THEN Sales * Growth.Factor WHEN 'S' THEN Heating ELSE Growth.Factor END
                * (1 + ((Season.Number * 7 + Recurring.Number * 5 + Year) % 13 - 6) / 400.0) END) AS INTEGER),
         VAT, Recurring.Name
  FROM Scale CROSS JOIN Growth CROSS JOIN Season CROSS JOIN Recurring;

-- What does not repeat each month, in euros of the first company.
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, VATClassCode, Name)
  SELECT BookCode, column1, 'OPER', column2, column3, CAST(round(column4 * 100 * Factor) AS INTEGER), column5, column6
  FROM Scale CROSS JOIN (VALUES
    ('2024-01-05', '2910', '2710', 2460, NULL, 'Turto draudimas metams'),
    ('2024-04-26', '3412', '3310', 2000, NULL, 'Atskaitymai į privalomąjį rezervą'),
    ('2024-05-20', '3412', '2710', 12000, NULL, 'Dividendai'),
    ('2024-09-16', '1241', '4430', 3280, 'PVM1', 'Kompiuteriai'),
    ('2024-12-31', '4210', '4400', 18000, NULL, 'Paskolos dalis, grąžintina 2025 metais'),
    ('2024-12-31', '6304', '4910', 240, NULL, 'Atostogų rezervas'),
    ('2024-12-31', '6304', '4100', 350, NULL, 'Pensijų atidėjiniai'),
    ('2025-01-06', '2910', '2710', 2460, NULL, 'Turto draudimas metams'),
    ('2025-03-11', '1221', '4430', 8600, 'PVM1', 'Siuvimo ir pakavimo įranga'),
    ('2025-04-28', '3412', '3310', 1500, NULL, 'Atskaitymai į privalomąjį rezervą'),
    ('2025-05-19', '3412', '2710', 14000, NULL, 'Dividendai'),
    ('2025-11-27', '2710', '4420', 1850, NULL, 'Pirkėjo avansas'),
    ('2025-12-31', '4210', '4400', 18000, NULL, 'Paskolos dalis, grąžintina 2026 metais'),
    ('2025-12-31', '6304', '4910', 260, NULL, 'Atostogų rezervas'),
    ('2025-12-31', '6304', '4100', 380, NULL, 'Pensijų atidėjiniai'));

-- Withheld from wages.
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, EntryDate, 'OPER', '4480', '4481', CAST(round(sum(Amount) * 0.395) AS INTEGER),
         'Išskaitytos socialinio draudimo įmokos ir gyventojų pajamų mokestis'
  FROM GLEntry WHERE Kind = 'OPER' AND CreditAccount = '4480' GROUP BY BookCode, EntryDate;

-- VAT of sales and purchases. That of goods acquired in other member states is owed and deducted at once; at
-- the end of each month what may be deducted is set off.
UPDATE GLEntry SET VATAmount = CAST(round(Amount * Rate / 100.0) AS INTEGER)
  FROM VATClass WHERE VATClass.Code = VATClassCode;
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, EntryDate, 'OPER', iif(CreditAccount LIKE '5%', DebitAccount, '2441'),
         iif(CreditAccount LIKE '5%' OR VATClassCode = 'PVM16', '4492', CreditAccount), VATAmount, 'PVM: ' || Name
  FROM GLEntry WHERE VATAmount > 0;
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, date(max(EntryDate), 'start of month', '+1 month', '-1 day'), 'OPER', '4492', '2441',
         sum(Amount), 'PVM atskaita'
  FROM GLEntry WHERE DebitAccount = '2441' GROUP BY BookCode, substr(EntryDate, 1, 7);

-- What a month leaves owing is paid in the next one.
CREATE TEMP TABLE Settled (Account TEXT, Day INTEGER, Name TEXT);
INSERT INTO Settled VALUES
  ('2410', 20, 'Pirkėjų apmokėjimai'), ('4430', 15, 'Apmokėjimai tiekėjams'),
  ('4480', 10, 'Išmokėtas darbo užmokestis'), ('4481', 15, 'Sumokėtos įmokos ir gyventojų pajamų mokestis'),
  ('4492', 25, 'Sumokėtas PVM');
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, date(Month, '+1 month', '+' || (Day - 1) || ' days'), 'OPER',
         iif(Account = '2410', '2710', Account), iif(Account = '2410', Account, '2710'),
         abs(sum(Debit - Credit)), Settled.Name
  FROM GLAccountMonth JOIN Settled ON Account = AccountCode
  WHERE Month < '2025-12-01'
  GROUP BY BookCode, Account, Month;

-- Tax on profit, owed for a year at its end and paid in June.
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, Year || '-12-31', 'OPER', '6900', '4470',
         CAST(round(sum(Credit - Debit) * iif(Year < 2025, 0.15, 0.16)) AS INTEGER), 'Pelno mokestis'
  FROM Growth JOIN GLAccountMonth ON substr(Month, 1, 4) = CAST(Year AS TEXT)
  WHERE AccountCode >= '5' GROUP BY BookCode, Year;
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, date(Month, 'start of month', '+6 months', '+13 days'), 'OPER', '4470', '2710', Credit,
         'Sumokėtas pelno mokestis'
  FROM GLAccountMonth WHERE AccountCode = '4470' AND Month < '2025-12-01';

-- Closing of the years; on the first day of the next one the profit becomes that of earlier years.
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, Year || '-12-31', 'UZD', iif(sum(Credit - Debit) > 0, AccountCode, '3411'),
         iif(sum(Credit - Debit) > 0, '3411', AccountCode), abs(sum(Credit - Debit)), 'Sąskaitos uždarymas'
  FROM Growth JOIN GLAccountMonth ON substr(Month, 1, 4) = CAST(Year AS TEXT)
  WHERE AccountCode >= '5' GROUP BY BookCode, Year, AccountCode;
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name)
  SELECT BookCode, date(Month, '+1 month'), 'OPER', '3411', '3412', sum(Credit - Debit),
         'Pelno perkėlimas į ankstesnių metų pelną'
  FROM GLAccountMonth WHERE AccountCode = '3411' AND Month < '2025-12-01' GROUP BY BookCode, Month;

DROP TABLE Settled;
DROP TABLE Recurring;
DROP TABLE Growth;
DROP TABLE Season;
DROP TABLE Scale;
