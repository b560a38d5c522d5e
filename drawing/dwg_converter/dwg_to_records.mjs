// Reads one DWG file (R13 to 2018) through LibreDWG and writes the model
// space, the blocks it draws and the layers as records for the program:
// one record a line, its fields separated by tabs.
//
//   node --liftoff-only dwg_to_records.mjs FILE.dwg
//
// The program starts this script once for each drawing, with a time limit,
// and reads nothing but its standard output and its exit status:
//   0  the records are written, the last line is "end"
//   2  wrong arguments
//   3  the file is damaged: LibreDWG cannot make out its contents
//   4  the file cannot be read from the disk
// LibreDWG's own remarks, and any failure, go to standard error.
//
// Copyright the Parvenna developers. GPL-3.0-or-later, as LibreDWG.
//
// Records (angles in radians, anticlockwise; m is 1 where the entity's
// extrusion points down, so that its own x axis runs to the left):
//   parvenna-dwg 1
//   layer NAME COLOUR OFF FROZEN
//   block NAME BASEX BASEY ... endblock      the entities of a block
//   model ... endmodel                       the entities of the model space
//   count TYPE N                             model space entities by type
//   end
// Each entity starts with KIND HANDLE LAYER COLOUR, where COLOUR is L (by
// layer), B (by block), a colour number or #rrggbb:
//   point X Y
//   line X1 Y1 X2 Y2
//   poly M CLOSED N (X Y BULGE)*N
//   arc M CX CY R START END
//   circle M CX CY R
//   ellipse M CX CY MAJORX MAJORY RATIO START END
//   spline CLOSED DEGREE NK K*NK NC (X Y W)*NC NF (X Y)*NF
//   text KIND M X Y HEIGHT ROTATION WIDTH HALIGN VALIGN X2 Y2 STRING
//   mtext X Y HEIGHT ROTATION ATTACHMENT SPACING STRING
//   insert M NAME X Y SX SY ROTATION COLUMNS ROWS COLUMNGAP ROWGAP
//   dimension NAME
//   solid M N (X Y)*N                          a filled area
//   hatch M SOLID NLOOPS then each loop: NEDGES and its edges,
//     L X1 Y1 X2 Y2 | A CX CY R START END CCW | E CX CY MX MY RATIO START END CCW
//     | S DEGREE NK K*NK NC (X Y W)*NC | P CLOSED N (X Y BULGE)*N (the whole loop)
// Texts escape the backslash, tab, line feed and carriage return as \\ \t \n \r.

import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';

// LibreDWG and its wrapper talk on the console; the records own stdout.
const toStderr = (...args) => process.stderr.write(args.map(String).join(' ') + '\n');
console.log = console.info = console.warn = console.debug = toStderr;

const CRITICAL = 128;  // LibreDWG's first error that leaves the drawing unread
const WRONG_CRC = 1;

function fail(status, message) {
  process.stderr.write(message + '\n');
  process.exitCode = status;
}

function esc(text) {
  return String(text ?? '').replace(/[\\\t\n\r]/g, (c) =>
    c === '\\' ? '\\\\' : c === '\t' ? '\\t' : c === '\n' ? '\\n' : '\\r');
}

function num(value, fallback = 0) {
  return typeof value === 'number' && Number.isFinite(value) ? String(value) : String(fallback);
}

const pt = (p) => [num(p?.x), num(p?.y)];

function hex6(rgb) {
  return '#' + (rgb & 0xffffff).toString(16).padStart(6, '0');
}

function colourOf(e) {
  if (typeof e.color === 'number' && e.color >= 0) return hex6(e.color);
  const index = e.colorIndex;
  if (index === undefined || index === null || index === 256) return 'L';
  if (index === 0) return 'B';
  return String(Math.min(255, Math.abs(index)));
}

const mirrored = (e) => (e.extrusionDirection && e.extrusionDirection.z < 0 ? '1' : '0');

function head(kind, e) {
  return [kind, esc(e.handle), esc(e.layer || '0'), colourOf(e)];
}

function directionAngle(d, fallback) {
  if (d && (d.x || d.y)) return Math.atan2(d.y, d.x);
  return fallback ?? 0;
}

function polyFields(vertices, closed) {
  const fields = [closed ? '1' : '0', String(vertices.length)];
  for (const v of vertices) fields.push(num(v.x), num(v.y), num(v.bulge));
  return fields;
}

// DEGREE NK K*NK NC (X Y W)*NC: a spline by its knots and weighted control points.
function splineFields(degree, knots, control, weights) {
  const fields = [num(degree, 3), String(knots.length), ...knots.map((k) => num(k))];
  fields.push(String(control.length));
  control.forEach((c, i) => fields.push(num(c.x), num(c.y), num(c.weight ?? c.w ?? weights?.[i], 1)));
  return fields;
}

function textFields(kind, e, t) {
  return [...head('text', e), kind, mirrored(t), ...pt(t.startPoint), num(t.textHeight),
    num(t.rotation), num(t.xScale, 1), num(t.halign), num(t.valign), ...pt(t.endPoint),
    esc(t.text)];
}

function hatchLoop(path) {
  if (Array.isArray(path.vertices)) {
    return ['1', 'P', ...polyFields(path.vertices, path.isClosed !== false)];
  }
  const edges = path.edges || [];
  const fields = [String(edges.length)];
  for (const edge of edges) {
    switch (edge.type) {
      case 1:
        fields.push('L', ...pt(edge.start), ...pt(edge.end));
        break;
      case 2:
        fields.push('A', ...pt(edge.center), num(edge.radius), num(edge.startAngle),
          num(edge.endAngle), edge.isCCW === false ? '0' : '1');
        break;
      case 3:
        fields.push('E', ...pt(edge.center), ...pt(edge.end), num(edge.lengthOfMinorAxis, 1),
          num(edge.startAngle), num(edge.endAngle), edge.isCCW === false ? '0' : '1');
        break;
      case 4:
        fields.push('S', ...splineFields(edge.degree, edge.knots || [], edge.controlPoints || []));
        break;
      default:
        fields.push('L', '0', '0', '0', '0');
    }
  }
  return fields;
}

// The records of one entity; none for what is not drawn.
function entityRecords(e, inBlock) {
  if (e.isVisible === false) return [];
  const m = mirrored(e);
  switch (e.type) {
    case 'POINT':
      return [[...head('point', e), ...pt(e.position)]];
    case 'LINE':
      return [[...head('line', e), ...pt(e.startPoint), ...pt(e.endPoint)]];
    case 'LWPOLYLINE':
      return [[...head('poly', e), m, ...polyFields(e.vertices || [], (e.flag & 1) === 1)]];
    case 'POLYLINE2D':
      return [[...head('poly', e), m, ...polyFields(e.vertices || [], (e.flag & 1) === 1)]];
    case 'POLYLINE3D':
      return [[...head('poly', e), '0',
        ...polyFields((e.vertices || []).map((v) => ({ x: v.x, y: v.y, bulge: 0 })), (e.flag & 1) === 1)]];
    case 'LEADER':
      return [[...head('poly', e), '0', ...polyFields((e.vertices || []).map((v) => ({ x: v.x, y: v.y, bulge: 0 })), false)]];
    case '3DFACE': {
      const corners = [e.corner1, e.corner2, e.corner3, e.corner4].filter(Boolean);
      return [[...head('poly', e), '0', ...polyFields(corners.map((c) => ({ ...c, bulge: 0 })), true)]];
    }
    case 'SOLID':
    case 'TRACE': {
      const c = [e.corner1, e.corner2, e.corner4 ?? e.corner3, e.corner3].filter(Boolean);
      return [[...head('solid', e), m, String(c.length), ...c.flatMap(pt)]];
    }
    case 'CIRCLE':
      return [[...head('circle', e), m, ...pt(e.center), num(e.radius)]];
    case 'ARC':
      return [[...head('arc', e), m, ...pt(e.center), num(e.radius), num(e.startAngle), num(e.endAngle)]];
    case 'ELLIPSE':
      return [[...head('ellipse', e), m, ...pt(e.center), ...pt(e.majorAxisEndPoint),
        num(e.axisRatio, 1), num(e.startAngle), num(e.endAngle, 2 * Math.PI)]];
    case 'SPLINE': {
      const fit = e.fitPoints || [];
      return [[...head('spline', e), (e.flag & 1) === 1 ? '1' : '0',
        ...splineFields(e.degree, e.knots || [], e.controlPoints || [], e.weights),
        String(fit.length), ...fit.flatMap(pt)]];
    }
    case 'TEXT':
      return [textFields('TEXT', e, e)];
    case 'ATTDEF':
      // Shown by itself as its tag; inside a block the insert's ATTRIB stands for it.
      if (inBlock || (e.flags & 1)) return [];
      return [textFields('ATTDEF', e, { ...e.text, text: e.tag })];
    case 'ATTRIB':
      if (e.flags & 1) return [];
      return [textFields('ATTRIB', e, e.text || {})];
    case 'MTEXT':
      return [[...head('mtext', e), ...pt(e.insertionPoint), num(e.textHeight),
        num(directionAngle(e.direction, e.rotation)), num(e.attachmentPoint, 1),
        num(e.lineSpacing, 1), esc(e.text)]];
    case 'MULTILEADER': {
      const out = [];
      for (const section of e.leaderSections || []) {
        for (const line of section.leaderLines || []) {
          const vertices = [...(line.vertices || [])];
          if (section.lastLeaderLinePointSet && section.lastLeaderLinePoint) vertices.push(section.lastLeaderLinePoint);
          if (vertices.length >= 2) {
            out.push([...head('poly', e), '0', ...polyFields(vertices.map((v) => ({ x: v.x, y: v.y, bulge: 0 })), false)]);
          }
        }
      }
      if (e.hasMText !== false && e.textContent) {
        out.push([...head('mtext', e), ...pt(e.textAnchor), num(e.textHeight),
          num(directionAngle(e.textDirection, e.textRotation)), num(e.textAttachmentPoint, 1),
          num(e.textLineSpacingFactor, 1), esc(e.textContent)]);
      }
      return out;
    }
    case 'MLINE': {
      // Each line of the style runs at its offset along the vertices' mitres.
      const vertices = e.vertices || [];
      const lines = vertices.length ? vertices[0].lines?.length || 0 : 0;
      const out = [];
      for (let j = 0; j < lines; ++j) {
        const points = vertices.map((v) => {
          const offset = v.lines?.[j]?.segmentParams?.[0] ?? 0;
          return { x: v.vertex.x + v.miterDirection.x * offset, y: v.vertex.y + v.miterDirection.y * offset, bulge: 0 };
        });
        out.push([...head('poly', e), '0', ...polyFields(points, (e.flags & 2) === 2)]);
      }
      return out;
    }
    case 'INSERT': {
      const out = [[...head('insert', e), m, esc(e.name), ...pt(e.insertionPoint), num(e.xScale, 1),
        num(e.yScale, 1), num(e.rotation), num(e.columnCount, 1), num(e.rowCount, 1),
        num(e.columnSpacing), num(e.rowSpacing)]];
      for (const attrib of e.attribs || []) out.push(...entityRecords(attrib, inBlock));
      return out;
    }
    case 'DIMENSION':
      return e.name ? [[...head('dimension', e), esc(e.name)]] : [];
    case 'HATCH': {
      const paths = e.boundaryPaths || [];
      const fields = head('hatch', e);
      // A gradient is filled with its first colour.
      const first = e.gradientFlag === 1 ? e.gradientColors?.[0] : undefined;
      if (first) fields[3] = first.colorIndex > 0 && first.colorIndex < 256 ? String(first.colorIndex) : hex6(first.rgb);
      return [[...fields, m, e.solidFill === 1 ? '1' : '0', String(paths.length), ...paths.flatMap(hatchLoop)]];
    }
    default:
      return [];  // rays, images, solids of 3D, tables, viewports: not drawn
  }
}

// The names the DXF of the same drawing gives these entities.
function dxfTypeName(type) {
  return type.startsWith('POLYLINE') ? 'POLYLINE' : type;
}

async function main() {
  const path = process.argv[2];
  if (!path || process.argv.length !== 3) {
    fail(2, 'usage: node --liftoff-only dwg_to_records.mjs FILE.dwg');
    return;
  }
  let bytes;
  try {
    bytes = readFileSync(path);
  } catch (error) {
    fail(4, `cannot read ${path}: ${error.message}`);
    return;
  }
  const { LibreDwg } = await import('@mlightcad/libredwg-web');
  const wasm = fileURLToPath(new URL('./node_modules/@mlightcad/libredwg-web/wasm/', import.meta.url));
  const libredwg = await LibreDwg.create(wasm);
  const module = libredwg.wasmInstance;
  module.FS.writeFile('drawing.dwg', new Uint8Array(bytes));
  const read = module.dwg_read_file('drawing.dwg');
  module.FS.unlink('drawing.dwg');
  if (read.error >= CRITICAL || !read.data) {
    fail(3, `LibreDWG error ${read.error}`);
    return;
  }
  const db = libredwg.convert(read.data);
  const records = ['parvenna-dwg\t1'];
  const emit = (fields) => records.push(fields.join('\t'));

  for (const layer of db.tables.LAYER.entries) {
    const trueColour = layer.colorIndex === 256 || layer.colorIndex === undefined;
    const colour = trueColour ? hex6(layer.color ?? 0xffffff) : String(Math.abs(layer.colorIndex) || 7);
    emit(['layer', esc(layer.name), colour, layer.off || layer.colorIndex < 0 ? '1' : '0',
      layer.frozen ? '1' : '0']);
  }

  let model = null;
  for (const block of db.tables.BLOCK_RECORD.entries) {
    const name = block.name || '';
    if (/^\*model_space$/i.test(name)) {
      model = block;
      continue;
    }
    if (/^\*paper_space/i.test(name)) continue;
    emit(['block', esc(name), ...pt(block.basePoint)]);
    for (const e of block.entities || []) entityRecords(e, true).forEach(emit);
    emit(['endblock']);
  }

  const entities = model ? model.entities || [] : [];
  if ((read.error & WRONG_CRC) && entities.length === 0) {
    fail(3, `LibreDWG error ${read.error}: nothing could be read`);
    return;
  }
  const counts = new Map();
  const count = (type) => counts.set(type, (counts.get(type) || 0) + 1);
  emit(['model']);
  for (const e of entities) {
    count(dxfTypeName(e.type));
    if (e.type === 'INSERT') (e.attribs || []).forEach(() => count('ATTRIB'));
    entityRecords(e, false).forEach(emit);
  }
  emit(['endmodel']);
  for (const [type, n] of [...counts].sort()) emit(['count', esc(type), String(n)]);
  emit(['end']);
  process.stdout.write(records.join('\n') + '\n');
}

main().catch((error) => fail(3, `the DWG reader failed: ${error?.stack || error}`));
