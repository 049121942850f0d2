-- The companies of the in-memory host (platform/memory/MemoryHost.cpp) for the embedded host, so that the
-- macros of the corpus meet the same data everywhere.
INSERT INTO Company (Code, VATCode, Name) VALUES
  ('302511789', 'LT100005117810', 'UAB „Medvilnė“'),
  ('399503183', '', 'AB „Baltija“');
INSERT INTO Book (Code, Name, CompanyCode) VALUES
  ('MEDVILNE', 'Medvilnė', '302511789'),
  ('BALTIJA', 'Baltija', '399503183');
INSERT INTO Address (CompanyCode, Kind, Street, PostCode, Town) VALUES
  ('302511789', '', 'Šaltinių g. 12', 'LT-03215', 'Vilnius'),
  ('399503183', '', '', '', '');
INSERT INTO Contact (CompanyCode, AddressKind, Kind, Value) VALUES
  ('302511789', '', 'TEL', '(8 5) 212 3456'),
  ('302511789', '', 'FA', '(8 5) 212 3457');
INSERT INTO ResponsiblePerson (CompanyCode, Role, FullName) VALUES
  ('302511789', 'DIR', 'Žygimantas Ąžuolaitis'),
  ('302511789', 'FDIR', 'Eglė Čepėnienė');
INSERT INTO PathKey (Code, BookCode, Folder) VALUES ('BookRepSave', '', 'C:\Ataskaitos');
INSERT INTO GLAccountSet (BookCode, Code, Name, IsBudget) VALUES
  ('MEDVILNE', 'F1', 'Finansinė apskaita', 0),
  ('MEDVILNE', 'B1', 'Biudžetas', 1),
  ('BALTIJA', 'F2', 'Finansinė apskaita', 0);
INSERT INTO DocumentType (Code, Name) VALUES
  ('BOBN', 'Biudžeto dokumentai'),
  ('SASK', 'Sąskaitos');
INSERT INTO THDocument (IDC, BookCode, DocTypeCode, Code, DocDate, Name) VALUES
  (11, 'MEDVILNE', 'BOBN', 'BIU-2023', '2023-06-30', '2023'),
  (12, 'MEDVILNE', 'BOBN', 'BIU-2024', '2024-06-30', '2024'),
  (13, 'MEDVILNE', 'SASK', 'S-1', '2024-06-30', 'S-1'),
  (14, 'BALTIJA', 'BOBN', 'BIU-B', '2024-06-30', 'B');
INSERT INTO GLPosting (BookCode, DocId, Line, AccSetCode, AccountCode, Amount) VALUES
  ('MEDVILNE', 11, 1, 'B1', '5000', 100),
  ('MEDVILNE', 12, 1, 'B1', '5000', 100);
