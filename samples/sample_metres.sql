-- Sample project in azimuths and metres: a lot that closes and one with a curve whose segment is subtracted.
-- Generated into a .pvd beside the program, after project_schema.sql.

INSERT INTO "tblSetting" VALUES (
  1, 4, 2, 3,              -- txtArc, txtChord, txtRadius, txtBearing
  0.001, 0, 1,          -- ClosureTolerance, UnitFeet, SquareX
  '.\sample_metres.dxf',   -- AutoCADFile: beside the program
  0, 3, 1, 0, 1,          -- Minimize, ErrDecimal, AddAreaCheck, AutoInvert, TangentCheck
  5, 0, 1, 0, 30, 0, 0,    -- WarningRanged, TangentToleranced, ToolTipOn, TangentTolerancem, TangentTolerances, WarningRangem, WarningRanges
  0, '%%D', 0, 256,       -- Bearing, DegreeSymbol, BackColor, ForeColor
  0, 0, 0, 1, 1, 0, 0, 0, 1, 1  -- no view saved yet
);

INSERT INTO "tblParcel" ("ParcelID", "Parcel", "Closure", "Area", "ClosureBearing", "PrecisionRatio") VALUES
  (1, 'Lot 201', 0, 3173.546, '115°48''2"', 0);
INSERT INTO "tblMeasurements" ("ParcelID", "RowNo", "RowType", "Length", "Direction", "Arc", "Radius", "Plus") VALUES
  (1, 0, 1, 54.264, '40°44''12"', NULL, NULL, NULL),
  (1, 1, 1, 53.85, '102°16''47"', NULL, NULL, NULL),
  (1, 2, 1, 51.389, '199°3''30"', NULL, NULL, NULL),
  (1, 3, 1, 73.716, '284°51''46"', NULL, NULL, NULL);

INSERT INTO "tblParcel" ("ParcelID", "Parcel", "Closure", "Area", "ClosureBearing", "PrecisionRatio") VALUES
  (2, 'Lot 202', 0, 4033.527, '123°42''30"', 0);
INSERT INTO "tblMeasurements" ("ParcelID", "RowNo", "RowType", "Length", "Direction", "Arc", "Radius", "Plus") VALUES
  (2, 0, 1, 60, '211°14''50"', NULL, NULL, NULL),
  (2, 1, 0, 40, '271°14''50"', 41.888, 40, 1),
  (2, 2, 1, 30, '301°14''50"', NULL, NULL, NULL),
  (2, 3, 1, 60, '31°14''50"', NULL, NULL, NULL),
  (2, 4, 1, 67.664, '104°3''18"', NULL, NULL, NULL);

