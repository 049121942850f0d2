-- Behind the sample: amounts beyond 32 bits in one company's ledger, and beyond what the host gives out in the other's.
-- The schema itself keeps a document's number within 32 bits.
INSERT INTO GLEntry (BookCode, EntryDate, Kind, DebitAccount, CreditAccount, Amount, Name) VALUES
  ('MEDVILNE', '2031-01-15', 'OPER', '2710', '5000', 3000000000, ''),
  ('MEDVILNE', '2031-02-15', 'OPER', '2710', '5000', 922334203685477, ''),
  ('BALTIJA', '2031-01-15', 'OPER', '2710', '5000', 9223372036854775807, ''),
  ('BALTIJA', '2031-01-16', 'OPER', '2710', '5000', 9223372036854775807, '');
PRAGMA ignore_check_constraints = ON;
INSERT INTO THDocument VALUES (4294967497, 'BALTIJA', 'BOBN', 'BIU-DIDELIS', '2031-01-01', '');
INSERT INTO GLPosting VALUES
  ('MEDVILNE', 105, 99, 'BIUDZ', '5000', -3000000000), ('BALTIJA', 204, 99, 'BIUDZ', '5000', 922337203685478);
