-- The tables of a project file (.pvd). Column names, types and order are the
-- format: routines read tblSetting by position, and its columns stand in the
-- order in which versions added them (views last). Integer columns are 16-bit
-- (SMALLINT), Long 32-bit (INTEGER); ParcelID is SQLite's own row number,
-- never given twice, so it needs no index of its own.
CREATE TABLE "tblSetting" ("txtArc" SMALLINT, "txtChord" SMALLINT, "txtRadius" SMALLINT, "txtBearing" SMALLINT, "ClosureTolerance" DOUBLE, "UnitFeet" BOOLEAN, "SquareX" BOOLEAN, "AutoCADFile" TEXT(255), "Minimize" BOOLEAN, "ErrDecimal" SMALLINT, "AddAreaCheck" BOOLEAN, "AutoInvert" BOOLEAN, "TangentCheck" BOOLEAN, "WarningRanged" SMALLINT, "TangentToleranced" SMALLINT, "ToolTipOn" BOOLEAN, "TangentTolerancem" SMALLINT, "TangentTolerances" SMALLINT, "WarningRangem" SMALLINT, "WarningRanges" SMALLINT, "Bearing" BOOLEAN, "DegreeSymbol" TEXT(3), "BackColor" SMALLINT, "ForeColor" SMALLINT, "ZoomFactor1" DOUBLE, "BLX1" DOUBLE, "BLY1" DOUBLE, "TRX1" DOUBLE, "TRY1" DOUBLE, "ZoomFactor2" DOUBLE, "BLX2" DOUBLE, "BLY2" DOUBLE, "TRX2" DOUBLE, "TRY2" DOUBLE);
CREATE TABLE "tblParcel" ("ParcelID" INTEGER PRIMARY KEY AUTOINCREMENT, "Parcel" TEXT(50), "Closure" DOUBLE, "Area" DOUBLE, "ClosureBearing" TEXT, "PrecisionRatio" DOUBLE);
CREATE UNIQUE INDEX "TempIndex" ON "tblParcel" ("Parcel");
CREATE TABLE "tblMeasurements" ("ParcelID" INTEGER, "RowNo" SMALLINT, "RowType" SMALLINT, "Length" DOUBLE, "Direction" TEXT(50), "Arc" DOUBLE, "Radius" DOUBLE, "Plus" SMALLINT);
