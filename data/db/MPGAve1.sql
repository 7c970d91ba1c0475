-- The fuel-economy samples the program adds to and averages: the same table as the template
-- CreateMPGAve1, empty as shipped.
CREATE TABLE IF NOT EXISTS SampleP1 (
    MPGp1 TEXT
);
