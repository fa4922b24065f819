// Every CityGML file of the test data to GLB, glTF and OBJ, to GLB with one node per top-level
// feature, and that OBJ back to GLB: the Khronos validator finds no error and no warning,
// triangles agree with the OBJ, the property table holds the mesh paths' features.
// Usage: node gltf_validate.js GMLCODEC TESTDATA_DIR SCRATCH_DIR
'use strict';
const fs = require('fs');
const path = require('path');
const lib = require('./gltf_lib');

const [tool, data, scratch] = process.argv.slice(2);
// Information (never warnings) the validator gives about extensions it does not know, the buffer
// views that only those extensions use, and original images whose sides are not powers of two.
const allowedInfo = new Set(['UNSUPPORTED_EXTENSION', 'UNUSED_OBJECT', 'IMAGE_NPOT_DIMENSIONS']);

(async () => {
  if (!fs.existsSync(data)) {
    console.log(`${data} is absent; skipped`);
    process.exit(77);
  }
  fs.mkdirSync(scratch, {recursive: true});
  const failures = [];
  let checked = 0;
  const fewer = [];
  for (const [n, input] of lib.cityGmlFiles(data).entries()) {
    const base = path.join(scratch, `f${n}`);
    const obj = lib.run(tool, ['convert', input, `${base}.obj`]);
    const glb = lib.run(tool, ['convert', input, `${base}.glb`]);
    const gltf = lib.run(tool, ['convert', input, `${base}.gltf`]);
    if (!obj.ok || !glb.ok || !gltf.ok) {
      // A file the tool refuses must be refused by every output alike.
      if (obj.ok || glb.ok || gltf.ok) failures.push(`${input}: outputs disagree on failure`);
      continue;
    }
    checked++;
    // The same file with one node per top-level feature, and the tool's own OBJ read back.
    const perFeature = lib.run(tool, ['convert', '--per-feature', input, `${base}_nodes.glb`]);
    const fromObj = lib.run(tool, ['convert', `${base}.obj`, `${base}_obj.glb`]);
    if (!perFeature.ok || !fromObj.ok) {
      failures.push(`${input}: --per-feature or OBJ input failed: ${perFeature.out} ${fromObj.out}`);
      continue;
    }
    for (const file of [`${base}.glb`, `${base}.gltf`, `${base}_nodes.glb`, `${base}_obj.glb`]) {
      const report = await lib.validate(file);
      const bad = report.issues.messages.filter(
        (m) => m.severity < 2 || (m.severity === 2 && !allowedInfo.has(m.code)));
      if (bad.length) failures.push(`${input} (${path.basename(file)}): ` +
                                    bad.map((m) => `${m.code} ${m.message} ${m.pointer}`).join('; '));
    }
    const model = lib.readGltf(`${base}.glb`);
    const objFile = lib.readObj(`${base}.obj`);
    // The tesselator gives a self-intersecting face fewer triangles than its corners suggest;
    // every other face has as many triangles as in the OBJ.
    const glTriangles = lib.triangles(model);
    if (glTriangles > objFile.triangles || glTriangles < objFile.triangles - 2)
      failures.push(`${input}: ${glTriangles} glTF triangles, ${objFile.triangles} in OBJ`);
    else if (glTriangles !== objFile.triangles) fewer.push(input);
    // Nodes: one per top-level feature with geometry, named by its id where it has one; the
    // triangles stay. OBJ input gives the triangles the OBJ holds.
    const nodes = lib.readGltf(`${base}_nodes.glb`).json.nodes || [];
    const tops = new Set(objFile.objects.map((o) => o.split('\\')[0]));
    const named = new Set(nodes.map((n) => n.name));
    const unnamed = [...tops].map((t) => (t.match(/\[(.+)\]$/) || [])[1]).filter(
        (id) => id && !named.has(id));
    if (nodes.length !== tops.size || unnamed.length)
      failures.push(`${input}: ${nodes.length} nodes for ${tops.size} top-level features` +
                    (unnamed.length ? `, none named ${unnamed[0]}` : ''));
    const perTriangles = lib.triangles(lib.readGltf(`${base}_nodes.glb`));
    if (perTriangles !== glTriangles)
      failures.push(`${input}: ${perTriangles} triangles with --per-feature, ${glTriangles} without`);
    // OBJ input: the OBJ's objects become the features, its faces the triangles (at most as
    // many as its polygons' corners suggest: the tesselator merges the slivers of bridged holes).
    const back = lib.readGltf(`${base}_obj.glb`);
    const backRows = back.json.extensions ? back.json.extensions.EXT_structural_metadata
        .propertyTables[0].count : 0;
    const backTriangles = lib.triangles(back);
    if (backRows !== new Set(objFile.objects.map(lib.featureOf)).size ||
        backTriangles > objFile.triangles || (objFile.triangles > 0) !== (backTriangles > 0))
      failures.push(`${input}: OBJ input gave ${backRows} features, ${backTriangles} triangles ` +
                    `for ${objFile.triangles} in the OBJ`);
    const features = new Set(objFile.objects.map(lib.featureOf));
    const tables = (model.json.extensions || {}).EXT_structural_metadata;
    const rows = tables ? tables.propertyTables[0].count : 0;
    if (rows !== features.size)
      failures.push(`${input}: ${rows} property table rows, ${features.size} features in paths`);
  }
  console.log(`${checked} files converted and checked`);
  if (checked < 50) failures.push(`only ${checked} files converted`);
  console.log(`fewer triangles than in the OBJ (self-intersecting faces): ${fewer.join(', ')}`);
  if (fewer.length > 5) failures.push(`${fewer.length} files with fewer triangles`);
  for (const f of failures) console.log('FAIL', f);
  process.exit(failures.length ? 1 : 0);
})();
