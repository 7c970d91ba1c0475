-- The fuel-economy samples: one row per instantaneous figure as it was shown ("23.4"). This
-- file makes the empty template that "Reset Fuel Consumption" copies over System/MPGAve1.db.
CREATE TABLE IF NOT EXISTS SampleP1 (
    MPGp1 TEXT
);
