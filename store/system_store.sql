-- The system store, ParvennaPro.pvs, as it is supplied beside the program.
-- tblSetting is read by position: the order of its columns is that of the
-- first versions and must not change. AutoName and FirstRun take the two
-- places that no routine reads by position.
CREATE TABLE "tblSetting" (
  "txtArc" SMALLINT,
  "txtChord" SMALLINT,
  "txtRadius" SMALLINT,
  "txtBearing" SMALLINT,
  "unitfeet" BOOLEAN,
  "SquareX" BOOLEAN,
  "Minimize" BOOLEAN,
  "AddAreaCheck" BOOLEAN,
  "AutoInvert" BOOLEAN,
  "TangentCheck" BOOLEAN,
  "WarningRanged" SMALLINT,
  "TangentToleranced" SMALLINT,
  "Decimal" SMALLINT,
  "Tolerance" DOUBLE,
  "AutoName" BOOLEAN,
  "ToolTipOn" BOOLEAN,
  "TangentTolerancem" SMALLINT,
  "TangentTolerances" SMALLINT,
  "WarningRangem" SMALLINT,
  "WarningRanges" SMALLINT,
  "FirstRun" BOOLEAN,
  "Bearing" BOOLEAN,
  "DegreeSymbol" TEXT(3),
  "BackColor" SMALLINT,
  "ForeColor" SMALLINT
);

-- The defaults of a new project, for a surveyor working in feet: curve data
-- keyed as a plat lists it (arc, radius, chord bearing, chord), closure good
-- to a hundredth of a foot, curves taken as tangent within 30 seconds and
-- not meant to be tangent beyond 5 degrees.
INSERT INTO "tblSetting" VALUES (
  1, 4, 2, 3,          -- txtArc, txtChord, txtRadius, txtBearing
  1, 1, 0,             -- unitfeet, SquareX, Minimize
  1, 0, 1,             -- AddAreaCheck, AutoInvert, TangentCheck
  5, 0,                -- WarningRanged, TangentToleranced
  2, 0.01,             -- Decimal, Tolerance
  1, 1,                -- AutoName, ToolTipOn
  0, 30,               -- TangentTolerancem, TangentTolerances
  0, 0,                -- WarningRangem, WarningRanges
  1,                   -- FirstRun
  1, '%%D', 0, 256     -- Bearing, DegreeSymbol, BackColor, ForeColor
);

-- AccessID numbers the uses: the newest row has the highest. The name and
-- the location have no limit of their own: a path is as long as the file
-- system lets it be.
CREATE TABLE "tblRecentProject" (
  "AccessID" INTEGER PRIMARY KEY AUTOINCREMENT,
  "AccessDate" DATETIME,
  "ProjectName" TEXT,
  "ProjectLocation" TEXT
);

-- The sample project lies beside the program; ".\" becomes the program's
-- directory at the first start.
INSERT INTO "tblRecentProject" ("AccessDate", "ProjectName", "ProjectLocation")
  VALUES ('2024-01-01 00:00:00', 'sample_feet.pvd', '.\');

CREATE TABLE "tblCredits" (
  "Contribution" TEXT(100),
  "Name" TEXT(100)
);

INSERT INTO "tblCredits" VALUES
  ('Design and programming', 'The Parvenna team'),
  ('Closure rules and field testing', 'Surveyors of the pilot offices'),
  ('Plan examination', 'Plan examiners of the pilot offices');
