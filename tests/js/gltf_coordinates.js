// Coordinates of the glTF output against PROJ's own cs2cs: a geographic file gives an extent in
// metres of the right size; a projected file's corner lands where cs2cs puts it, within 1 mm, in
// the grid frame and in the east-north-up frame.
// Usage: node gltf_coordinates.js GMLCODEC TESTDATA_DIR SCRATCH_DIR
'use strict';
const fs = require('fs');
const path = require('path');
const {execFileSync} = require('child_process');
const lib = require('./gltf_lib');

const [tool, data, scratch] = process.argv.slice(2);
const failures = [];
const check = (ok, text) => { if (!ok) failures.push(text); };

function cs2cs(from, to, points) {
  const text = points.map((p) => p.join(' ')).join('\n') + '\n';
  return execFileSync('cs2cs', ['-f', '%.6f', from, to], {input: text, encoding: 'utf8'})
    .trim().split('\n').map((l) => l.trim().split(/\s+/).slice(0, 3).map(Number));
}

// The file's coordinates of every vertex, from the OBJ (host axes x, z, -y turned back).
function objVertices(file) {
  return fs.readFileSync(file, 'utf8').split('\n').filter((l) => l.startsWith('v '))
    .map((l) => { const [x, y, z] = l.split(/\s+/).slice(1).map(Number); return [x, -z, y]; });
}

function positions(model) {
  return lib.primitives(model).flatMap((p) => lib.readVectors(model, p.attributes.POSITION, 3));
}

const nearest = (points, target) => Math.min(...points.map((p) =>
  Math.hypot(p[0] - target[0], p[1] - target[1], p[2] - target[2])));

if (!fs.existsSync(data)) {
  console.log(`${data} is absent; skipped`);
  process.exit(77);
}
fs.mkdirSync(scratch, {recursive: true});

// Geographic: PLATEAU in JGD2011 latitude, longitude and height.
{
  const input = path.join(data, 'plateau_japan/53392547_bldg_6697_op2.gml');
  const base = path.join(scratch, 'plateau');
  check(lib.run(tool, ['convert', input, `${base}.glb`]).ok, 'PLATEAU to GLB failed');
  check(lib.run(tool, ['convert', input, `${base}.obj`]).ok, 'PLATEAU to OBJ failed');
  const file = objVertices(`${base}.obj`);
  const lat = file.map((p) => p[0]), lon = file.map((p) => p[1]);
  const [a, b] = cs2cs('EPSG:6668', 'EPSG:4978',
                       [[Math.min(...lat), Math.min(...lon), 0], [Math.max(...lat), Math.max(...lon), 0]]);
  const expected = Math.hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
  const out = positions(lib.readGltf(`${base}.glb`));
  const xs = out.map((p) => p[0]), zs = out.map((p) => p[2]);
  const extent = Math.hypot(Math.max(...xs) - Math.min(...xs), Math.max(...zs) - Math.min(...zs));
  console.log(`PLATEAU: horizontal diagonal ${extent.toFixed(2)} m, PROJ says ${expected.toFixed(2)} m`);
  check(expected > 10 && Math.abs(extent - expected) < 0.01 * expected,
        `PLATEAU extent ${extent} m, expected ${expected} m`);
  const extras = lib.readGltf(`${base}.glb`).json.asset.extras;
  check(extras.frame === 'east-north-up' && extras.enuToEcef.length === 16,
        `PLATEAU frame ${extras.frame}`);
}

// Projected: ETRS89 / UTM 32N; the first corner of the file.
{
  const input = path.join(data, 'citygml2_lod2_buildings/Building_LOD2-EPSG25832.gml');
  const base = path.join(scratch, 'utm');
  check(lib.run(tool, ['convert', input, `${base}.obj`]).ok, 'UTM to OBJ failed');
  const corner = objVertices(`${base}.obj`)[0];
  for (const frame of ['grid', 'enu']) {
    const glb = `${base}_${frame}.glb`;
    check(lib.run(tool, ['convert', input, glb].concat(frame === 'enu' ? ['--enu'] : [])).ok,
          `UTM to GLB (${frame}) failed`);
    const model = lib.readGltf(glb);
    const {origin, enuToEcef: m} = model.json.asset.extras;
    let expected;
    if (frame === 'grid') {
      expected = [corner[0] - origin[0], corner[2] - origin[2], -(corner[1] - origin[1])];
    } else {
      const [ecef] = cs2cs('EPSG:25832', 'EPSG:4978', [corner]);
      const d = [ecef[0] - m[12], ecef[1] - m[13], ecef[2] - m[14]];
      const dot = (k) => m[k] * d[0] + m[k + 1] * d[1] + m[k + 2] * d[2];
      expected = [dot(0), dot(8), -dot(4)]; // east, up, -north
      const [originEcef] = cs2cs('EPSG:25832', 'EPSG:4978', [origin]);
      check(Math.hypot(originEcef[0] - m[12], originEcef[1] - m[13], originEcef[2] - m[14]) < 0.001,
            'origin of the east-north-up frame is not where cs2cs puts it');
    }
    const miss = nearest(positions(model), expected);
    console.log(`UTM ${frame}: corner within ${(miss * 1000).toFixed(3)} mm`);
    check(miss < 0.001, `UTM ${frame}: corner ${miss} m away from where PROJ puts it`);
  }
  // Tiles: each tile's local frame and transform put the corner there too.
  check(lib.run(tool, ['tiles', input, `${base}_tiles`, '--tile-features', '5']).ok, 'UTM tiles failed');
  const [ecef] = cs2cs('EPSG:25832', 'EPSG:4978', [corner]);
  const placed = require('./tiles_lib').check(`${base}_tiles`).placed.flatMap((g) => positions(lib.readGltf(g.file))
    .map(([x, y, z]) => [0, 1, 2].map((r) => g.abs[r] * x - g.abs[4 + r] * z + g.abs[8 + r] * y + g.abs[12 + r])));
  const miss = nearest(placed, ecef);
  console.log(`UTM tiles (${placed.length} vertices): corner within ${(miss * 1000).toFixed(3)} mm`);
  check(miss < 0.001, `UTM tiles: corner ${miss} m away from where PROJ puts it`);
}

for (const f of failures) console.log('FAIL', f);
process.exit(failures.length ? 1 : 0);
