// `gmlcodec convert DIR OUTDIR --to F` on two threads: the folder layout is mirrored, each GLB
// equals the one-file conversion, a broken file is reported and the others still converted, and
// a folder converted into itself loses nothing. Usage: node tiles_convert.js GMLCODEC TESTDATA_DIR SCRATCH_DIR
'use strict';
const fs = require('fs');
const path = require('path');
const lib = require('./gltf_lib');

const [tool, data, scratch] = process.argv.slice(2);
if (!fs.existsSync(data)) { console.log(`${data} is absent; skipped`); process.exit(77); }
fs.rmSync(scratch, {recursive: true, force: true});
const inDir = path.join(scratch, 'in');
const files = require('./tiles_inputs.json').good.slice(1, 4);
files.forEach((f, i) => {
  fs.mkdirSync(path.join(inDir, `d${i}`), {recursive: true});
  fs.copyFileSync(path.join(data, f), path.join(inDir, `d${i}`, path.basename(f)));
});
fs.writeFileSync(path.join(inDir, 'broken.gml'), '<CityModel');
const failures = [];
for (const to of ['glb', 'obj', 'gml']) {
  const out = path.join(scratch, to);
  const r = lib.run(tool, ['convert', inDir, out, '--to', to, '--jobs', '2']);
  if (r.ok || !r.out.includes('broken.gml')) failures.push(`${to}: the broken file did not fail the run`);
  if (!r.out.includes(`converted ${files.length} of ${files.length + 1} files`)) failures.push(`${to}: no summary`);
  files.forEach((f, i) => {
    const rel = path.join(`d${i}`, path.basename(f).replace(/\.[^.]+$/, `.${to}`));
    const single = path.join(scratch, `single_${i}.${to}`);
    lib.run(tool, ['convert', path.join(inDir, `d${i}`, path.basename(f)), single]);
    if (!fs.existsSync(path.join(out, rel))) failures.push(`${to}: ${rel} missing`);
    else if (to === 'glb' && !fs.readFileSync(path.join(out, rel)).equals(fs.readFileSync(single)))
      failures.push(`${to}: ${rel} differs from the one-file conversion`);
  });
}
const before = fs.readFileSync(path.join(inDir, 'd0', path.basename(files[0])));
const self = lib.run(tool, ['convert', inDir, inDir, '--to', 'gml']);
if (self.ok || !self.out.includes('would overwrite')) failures.push('converting a folder into itself was not refused');
if (!before.equals(fs.readFileSync(path.join(inDir, 'd0', path.basename(files[0]))))) failures.push('an input was overwritten');
for (const f of failures) console.log('FAIL', f);
process.exit(failures.length ? 1 : 0);
