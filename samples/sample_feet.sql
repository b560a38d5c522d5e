-- Sample project in quadrant bearings and feet: a lot that closes, one whose last distance was keyed wrong, one with curves of both signs.
-- Generated into a .pvd beside the program, after project_schema.sql.

INSERT INTO "tblSetting" VALUES (
  1, 4, 2, 3,              -- txtArc, txtChord, txtRadius, txtBearing
  0.01, 1, 1,          -- ClosureTolerance, UnitFeet, SquareX
  '.\sample_feet.dxf',   -- AutoCADFile: beside the program
  0, 2, 1, 0, 1,          -- Minimize, ErrDecimal, AddAreaCheck, AutoInvert, TangentCheck
  5, 0, 1, 0, 30, 0, 0,    -- WarningRanged, TangentToleranced, ToolTipOn, TangentTolerancem, TangentTolerances, WarningRangem, WarningRanges
  1, '%%D', 0, 256,       -- Bearing, DegreeSymbol, BackColor, ForeColor
  0, 0, 0, 1, 1, 0, 0, 0, 1, 1  -- no view saved yet
);

INSERT INTO "tblParcel" ("ParcelID", "Parcel", "Closure", "Area", "ClosureBearing", "PrecisionRatio") VALUES
  (1, 'Lot 101', 0, 34591.89, 'S88°29''17"E', 0);
INSERT INTO "tblMeasurements" ("ParcelID", "RowNo", "RowType", "Length", "Direction", "Arc", "Radius", "Plus") VALUES
  (1, 0, 1, 169.94, 'N16°32''13"E', NULL, NULL, NULL),
  (1, 1, 1, 130.89, 'N69°35''31"E', NULL, NULL, NULL),
  (1, 2, 1, 129.39, 'S30°32''49"E', NULL, NULL, NULL),
  (1, 3, 1, 153.24, 'S39°20''18"W', NULL, NULL, NULL),
  (1, 4, 1, 141.3, 'N81°17''23"W', NULL, NULL, NULL);

INSERT INTO "tblParcel" ("ParcelID", "Parcel", "Closure", "Area", "ClosureBearing", "PrecisionRatio") VALUES
  (2, 'Lot 102', 0.37, 18921.34, 'N85°22''42"E', 0.0006707394449177891);
INSERT INTO "tblMeasurements" ("ParcelID", "RowNo", "RowType", "Length", "Direction", "Arc", "Radius", "Plus") VALUES
  (2, 0, 1, 142.5, 'N10°18''30"W', NULL, NULL, NULL),
  (2, 1, 1, 136.81, 'N84°48''0"E', NULL, NULL, NULL),
  (2, 2, 1, 143.23, 'S7°2''17"E', NULL, NULL, NULL),
  (2, 3, 1, 129.09, 'S85°20''39"W', NULL, NULL, NULL);

INSERT INTO "tblParcel" ("ParcelID", "Parcel", "Closure", "Area", "ClosureBearing", "PrecisionRatio") VALUES
  (3, 'Lot 103', 0, 46655.51, 'S76°51''40"E', 0);
INSERT INTO "tblMeasurements" ("ParcelID", "RowNo", "RowType", "Length", "Direction", "Arc", "Radius", "Plus") VALUES
  (3, 0, 1, 150, 'N12°30''15"E', NULL, NULL, NULL),
  (3, 1, 0, 141.42, 'N57°30''15"E', 157.08, 100, 0),
  (3, 2, 1, 100, 'S77°29''45"E', NULL, NULL, NULL),
  (3, 3, 1, 100, 'S12°30''15"W', NULL, NULL, NULL),
  (3, 4, 0, 100, 'S12°30''15"W', 108.02, 80, 1),
  (3, 5, 1, 50, 'S12°30''15"W', NULL, NULL, NULL),
  (3, 6, 1, 200, 'N77°29''44"W', NULL, NULL, NULL);

