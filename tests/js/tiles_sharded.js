// The sharded path: `gmlcodec tiles --part` per file through GNU parallel, then `tiles --merge`,
// must give a tileset that passes the structure checks and holds the same features per tile as
// the one-step run. Usage: node tiles_sharded.js GMLCODEC TESTDATA_DIR SCRATCH_DIR
'use strict';
const fs = require('fs');
const path = require('path');
const {execFileSync} = require('child_process');
const lib = require('./gltf_lib');
const tiles = require('./tiles_lib');

const [tool, data, scratch] = process.argv.slice(2);
const inputs = require('./tiles_inputs.json').good.map((f) => path.join(data, f));

if (!fs.existsSync(data)) { console.log(`${data} is absent; skipped`); process.exit(77); }
fs.rmSync(scratch, {recursive: true, force: true});
const oneStep = path.join(scratch, 'one'), sharded = path.join(scratch, 'sharded');
const failures = [];
const one = lib.run(tool, ['tiles', ...inputs, oneStep, '--tile-features', '15']);
if (!one.ok) failures.push(`one-step run failed: ${one.out}`);
// One job per file, as across hosts with --sshlogin; --halt makes any failing part fail the run.
execFileSync('parallel', ['--will-cite', '--halt', 'now,fail=1', '-j', '2', tool, 'tiles', '--part',
                          '{}', sharded, '--tile-features', '15', ':::', ...inputs], {stdio: 'inherit'});
const merged = lib.run(tool, ['tiles', '--merge', sharded]);
console.log(merged.out);
if (!merged.ok) failures.push(`merge failed: ${merged.out}`);

const a = tiles.check(oneStep), b = tiles.check(sharded);
failures.push(...a.failures.map((f) => `one-step ${f}`), ...b.failures.map((f) => `sharded ${f}`));
const show = (m) => [...m].map(([t, f]) => `${t}: ${f.join(' ')}`).sort();
const sa = show(a.tiles), sb = show(b.tiles);
if (sa.length < inputs.length * 2) failures.push(`only ${sa.length} tiles`);
if (sa.join('\n') !== sb.join('\n'))
  failures.push('features per tile differ: ' +
                sa.filter((t) => !sb.includes(t)).concat(sb.filter((t) => !sa.includes(t))).slice(0, 4).join(' | '));
const root = (dir) => JSON.parse(fs.readFileSync(path.join(dir, 'tileset.json'), 'utf8'));
if (JSON.stringify(root(oneStep)) !== JSON.stringify(root(sharded))) failures.push('root tilesets differ');
if (root(oneStep).root.children.length >= inputs.length) failures.push('the root is flat, not a tree');
console.log(`${sa.length} tiles compared`);
for (const f of failures) console.log('FAIL', f);
process.exit(failures.length ? 1 : 0);
