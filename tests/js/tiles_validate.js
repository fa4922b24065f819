// `gmlcodec tiles` over real files, a broken one and two in CRSs PROJ cannot place: those are
// reported and skipped, the rest become a tileset that passes the structure checks, whose GLBs pass
// the Khronos validator and whose tiles hold every feature of the inputs exactly once.
// Usage: node tiles_validate.js GMLCODEC TESTDATA_DIR SCRATCH_DIR
'use strict';
const fs = require('fs');
const path = require('path');
const lib = require('./gltf_lib');
const tiles = require('./tiles_lib');

const [tool, data, scratch] = process.argv.slice(2);
const allowedInfo = new Set(['UNSUPPORTED_EXTENSION', 'UNUSED_OBJECT', 'IMAGE_NPOT_DIMENSIONS']);
const inputs = require('./tiles_inputs.json');

(async () => {
  if (!fs.existsSync(data)) { console.log(`${data} is absent; skipped`); process.exit(77); }
  fs.rmSync(scratch, {recursive: true, force: true});
  const inDir = path.join(scratch, 'in'), out = path.join(scratch, 'out');
  // Good files by name (their textures lie beside them); a folder with the bad ones.
  fs.mkdirSync(path.join(inDir, 'sub'), {recursive: true});
  for (const f of inputs.unplaceable) fs.symlinkSync(path.join(data, f), path.join(inDir, 'sub', path.basename(f)));
  fs.writeFileSync(path.join(inDir, 'broken.gml'), '<CityModel xmlns="http://www.opengis.net/citygml/2.0"><cityObjectMember>');
  const failures = [];

  const run = lib.run(tool, ['tiles', ...inputs.good.map((f) => path.join(data, f)), inDir, out, '--tile-features', '15', '--jobs', '2']);
  console.log(run.out);
  if (run.ok) failures.push('a broken input did not make the run exit 1');
  for (const name of ['broken.gml', ...inputs.unplaceable.map((f) => path.basename(f))])
    if (!run.out.includes(name)) failures.push(`${name} was not reported`);
  if (!/wrote .*tileset\.json: 6 of 9 files/.test(run.out)) failures.push('no summary of 6 of 9 files');

  const result = tiles.check(out);
  failures.push(...result.failures);
  let depth = 0;
  for (const t of result.tiles.keys()) depth = Math.max(depth, t.split('-').length);
  if (depth < 3) failures.push(`the deepest tile is on level ${depth}; the test wants a tree`);
  for (const file of result.glbs) {
    const report = await lib.validate(file);
    const bad = report.issues.messages.filter((m) => m.severity < 2 || (m.severity === 2 && !allowedInfo.has(m.code)));
    if (bad.length) failures.push(`${file}: ` + bad.map((m) => `${m.code} ${m.message} ${m.pointer}`).join('; '));
  }
  // Completeness, file by file: its part's tiles against the whole-file GLB.
  const index = JSON.parse(fs.readFileSync(path.join(out, 'tileset.json'), 'utf8'));
  const parts = [];
  const walk = (t) => { if (t.content) parts.push(path.dirname(t.content.uri)); (t.children || []).forEach(walk); };
  walk(index.root);
  if (parts.length !== inputs.good.length) failures.push(`${parts.length} parts for ${inputs.good.length} good files`);
  let features = 0;
  for (const part of parts) {
    const info = JSON.parse(fs.readFileSync(path.join(out, part, 'index.json'), 'utf8'));
    const expected = tiles.featuresOfFile(tool, info.file, scratch);
    const lists = [...result.tiles].filter(([t]) => t.startsWith(part + '/')).map(([, f]) => f);
    features += expected.length;
    if (info.features !== expected.length) failures.push(`${part}: index counts ${info.features}, the file has ${expected.length}`);
    failures.push(...tiles.compareFeatures(expected, lists).map((p) => `${part}: ${p}`));
  }
  console.log(`${result.glbs.length} tiles, ${features} features in ${parts.length} parts checked`);
  for (const f of failures) console.log('FAIL', f);
  process.exit(failures.length ? 1 : 0);
})().catch((e) => { console.log('FAIL', e); process.exit(1); });
