// Reading back a 3D Tiles 1.1 tileset written by the tool: the structure rules that matter, where
// PROJ puts each tile's origin, every vertex inside its tile's region, and the features per tile.
'use strict';
const fs = require('fs');
const path = require('path');
const {execFileSync} = require('child_process');
const lib = require('./gltf_lib');

// Column-major 4x4 product.
function multiply(a, b) {
  const out = new Array(16).fill(0);
  for (let c = 0; c < 4; c++)
    for (let r = 0; r < 4; r++)
      for (let k = 0; k < 4; k++) out[c * 4 + r] += a[k * 4 + r] * b[c * 4 + k];
  return out;
}
const identity = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];

// WGS84 Earth-centred to longitude, latitude (radians), height (Bowring, then iterated).
function geodetic([x, y, z]) {
  const a = 6378137, f = 1 / 298.257223563, e2 = f * (2 - f);
  const p = Math.hypot(x, y);
  let lat = Math.atan2(z, p * (1 - e2)), h = 0;
  for (let i = 0; i < 10; i++) {
    const n = a / Math.sqrt(1 - e2 * Math.sin(lat) ** 2);
    h = p / Math.cos(lat) - n;
    lat = Math.atan2(z, p * (1 - e2 * n / (n + h)));
  }
  return [Math.atan2(y, x), lat, h];
}

// Strings of a property table column.
function column(gltf, name) {
  const meta = (gltf.json.extensions || {}).EXT_structural_metadata;
  if (!meta) return [];
  const table = meta.propertyTables[0];
  const prop = table.properties[name];
  const view = (i) => gltf.json.bufferViews[i];
  const values = view(prop.values), offsets = view(prop.stringOffsets);
  const out = [];
  for (let i = 0; i < table.count; i++) {
    const at = offsets.byteOffset + i * 4;
    const from = gltf.bin.readUInt32LE(at), to = gltf.bin.readUInt32LE(at + 4);
    out.push(gltf.bin.subarray(values.byteOffset + from, values.byteOffset + to).toString('utf8'));
  }
  return out;
}

// The top-level features of a GLB, each once.
function featuresOf(gltf) {
  return [...new Set(column(gltf, 'feature'))].sort();
}

// Earth-centred coordinates of points in a CRS, through PROJ's cs2cs.
function toEcef(crs, points) {
  const text = execFileSync('cs2cs', ['-f', '%.4f', crs, 'EPSG:4978'],
                            {input: points.map((p) => p.join(' ')).join('\n') + '\n', encoding: 'utf8'});
  return text.trim().split('\n').map((l) => l.trim().split(/\s+/).slice(0, 3).map(Number));
}

// Checks the tileset below `dir` (tileset.json there). Returns {failures, tiles}: tiles maps each
// GLB's path relative to `dir` to its sorted top-level features.
function check(dir) {
  const failures = [];
  const tiles = new Map();
  const glbs = [];
  const fail = (where, what) => failures.push(`${where}: ${what}`);
  const within = (inner, outer) => inner[0] >= outer[0] - 1e-12 && inner[1] >= outer[1] - 1e-12 &&
    inner[2] <= outer[2] + 1e-12 && inner[3] <= outer[3] + 1e-12 &&
    inner[4] >= outer[4] - 1e-6 && inner[5] <= outer[5] + 1e-6;

  function readTileset(file, parentError) {
    const where = path.relative(dir, file);
    if (!fs.existsSync(file)) { fail(where, 'missing'); return null; }
    const ts = JSON.parse(fs.readFileSync(file, 'utf8'));
    if (!ts.asset || ts.asset.version !== '1.1') fail(where, `asset.version ${ts.asset && ts.asset.version}`);
    if (typeof ts.geometricError !== 'number' || ts.geometricError < 0) fail(where, 'geometricError');
    if (parentError !== undefined && ts.geometricError > parentError) fail(where, 'geometricError above its parent');
    if (!ts.root) { fail(where, 'no root'); return null; }
    if (!['ADD', 'REPLACE'].includes(ts.root.refine)) fail(where, 'root without refine');
    return ts;
  }

  function visit(tile, base, parentAbs, parentRegion, parentError, where) {
    const region = tile.boundingVolume && tile.boundingVolume.region;
    if (!Array.isArray(region) || region.length !== 6 || !region.every(Number.isFinite)) {
      fail(where, 'no region'); return;
    }
    if (region[0] < -Math.PI || region[2] > Math.PI || region[1] < -Math.PI / 2 || region[3] > Math.PI / 2 ||
        region[0] > region[2] || region[1] > region[3] || region[4] > region[5])
      fail(where, `region out of range ${region}`);
    if (parentRegion && !within(region, parentRegion)) fail(where, 'region outside its parent\'s');
    if (typeof tile.geometricError !== 'number' || tile.geometricError < 0) fail(where, 'geometricError');
    if (tile.geometricError > parentError) fail(where, 'geometricError above its parent\'s');
    const abs = tile.transform ? multiply(parentAbs, tile.transform) : parentAbs;
    const children = tile.children || [];
    let external = false;
    if (tile.content) {
      const file = path.join(base, tile.content.uri);
      if (!fs.existsSync(file)) fail(where, `content ${tile.content.uri} missing`);
      else if (file.endsWith('.json')) {
        external = true;
        const ts = readTileset(file, tile.geometricError);
        if (ts) visit(ts.root, path.dirname(file), abs, region, tile.geometricError,
                      path.relative(dir, file));
      } else glbs.push({file, abs, region, where});
    }
    if (!children.length && !external && tile.geometricError !== 0) fail(where, 'leaf with geometricError > 0');
    if (children.length && tile.geometricError <= 0) fail(where, 'parent with geometricError 0');
    children.forEach((c, i) => visit(c, base, abs, region, tile.geometricError, `${where}/${i}`));
  }

  const root = readTileset(path.join(dir, 'tileset.json'));
  if (root) visit(root.root, dir, identity, null, root.geometricError, 'tileset.json');

  // Origins against PROJ, vertices against regions, features per tile.
  const byCrs = new Map();
  for (const g of glbs) {
    const gltf = lib.readGltf(g.file);
    const extras = gltf.json.asset.extras || {};
    if (!extras.crs || !extras.origin) { fail(g.where, 'no crs or origin in asset.extras'); continue; }
    g.gltf = gltf;
    if (!byCrs.has(extras.crs)) byCrs.set(extras.crs, []);
    byCrs.get(extras.crs).push(g);
    tiles.set(path.relative(dir, g.file), featuresOf(gltf));
  }
  for (const [crs, list] of byCrs) {
    const ecef = toEcef(crs, list.map((g) => g.gltf.json.asset.extras.origin));
    list.forEach((g, i) => {
      const moved = Math.hypot(g.abs[12] - ecef[i][0], g.abs[13] - ecef[i][1], g.abs[14] - ecef[i][2]);
      if (!(moved < 1)) fail(g.where, `origin ${moved.toFixed(3)} m from where PROJ puts it`);
      for (const p of lib.primitives(g.gltf)) {
        for (const [x, y, z] of lib.readVectors(g.gltf, p.attributes.POSITION, 3)) {
          const e = [x, -z, y]; // glTF y-up to the tile's z-up
          const w = [0, 1, 2].map((r) => g.abs[r] * e[0] + g.abs[4 + r] * e[1] + g.abs[8 + r] * e[2] + g.abs[12 + r]);
          const [lon, lat, h] = geodetic(w);
          const r = g.region;
          if (lon < r[0] - 1e-7 || lon > r[2] + 1e-7 || lat < r[1] - 1e-7 || lat > r[3] + 1e-7 ||
              h < r[4] - 1 || h > r[5] + 1) {
            fail(g.where, `vertex at ${lon}, ${lat}, ${h} outside region ${r}`);
            return;
          }
        }
      }
    });
  }
  return {failures, tiles, glbs: glbs.map((g) => g.file), placed: glbs};
}

// The features a whole-file GLB holds, each once.
function featuresOfFile(tool, input, scratch) {
  const glb = path.join(scratch, path.basename(input) + '.whole.glb');
  const r = lib.run(tool, ['convert', input, glb]);
  if (!r.ok) throw new Error(r.out);
  return featuresOf(lib.readGltf(glb));
}

// Completeness of one file's tiles: the features with ids are the file's, each exactly once;
// generated ids (with a colon, which no gml:id has) restart per tile, so only their number counts.
function compareFeatures(expected, tileLists) {
  const seen = tileLists.flat();
  const named = (f) => !f.includes(':');
  const want = expected.filter(named).sort(), got = seen.filter(named).sort();
  const problems = [];
  if (want.join('\n') !== got.join('\n')) {
    const dup = got.filter((f, i) => got.indexOf(f) !== i);
    const missing = want.filter((f) => !got.includes(f));
    problems.push(`${got.length} named features in tiles, ${want.length} in the file; ` +
                  `repeated ${dup.slice(0, 3)}, missing ${missing.slice(0, 3)}`);
  }
  if (seen.length - got.length !== expected.length - want.length)
    problems.push(`${seen.length - got.length} unnamed features in tiles, ${expected.length - want.length} in the file`);
  return problems;
}

module.exports = {check, featuresOf, featuresOfFile, compareFeatures};
