-- The catalogue of saved logs: one row per log in Log/, in the order the catalogue shows the
-- columns. "Frame" is a number, the others are text.
CREATE TABLE IF NOT EXISTS LogRecords (
    "Name" TEXT,
    "Date Recorded" TEXT,
    "Year" TEXT,
    "Make" TEXT,
    "Model" TEXT,
    "Vin" TEXT,
    "Plate" TEXT,
    "Frame" INTEGER,
    "Interface Type" TEXT,
    "Mileage" TEXT
);
