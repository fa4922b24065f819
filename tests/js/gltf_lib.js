// Reading GLB/glTF and OBJ files, running the tool and the Khronos validator: shared by the
// glTF checks.
'use strict';
const fs = require('fs');
const path = require('path');
const {execFileSync} = require('child_process');
const validator = require('gltf-validator');

function readGltf(file) {
  const bytes = fs.readFileSync(file);
  if (file.endsWith('.glb')) {
    const jsonLength = bytes.readUInt32LE(12);
    const json = JSON.parse(bytes.subarray(20, 20 + jsonLength).toString('utf8'));
    const binStart = 20 + jsonLength + 8;
    return {json, bin: bytes.subarray(binStart)};
  }
  const json = JSON.parse(bytes.toString('utf8'));
  const bin = json.buffers
    ? fs.readFileSync(path.join(path.dirname(file), decodeURIComponent(json.buffers[0].uri)))
    : Buffer.alloc(0);
  return {json, bin};
}

// Floats of an accessor, as arrays of `size` components.
function readVectors(gltf, index, size) {
  const a = gltf.json.accessors[index];
  const view = gltf.json.bufferViews[a.bufferView];
  const stride = view.byteStride || size * 4;
  const out = [];
  for (let i = 0; i < a.count; i++) {
    const at = view.byteOffset + (a.byteOffset || 0) + i * stride;
    const v = [];
    for (let k = 0; k < size; k++) v.push(gltf.bin.readFloatLE(at + k * 4));
    out.push(v);
  }
  return out;
}

function primitives(gltf) {
  return (gltf.json.meshes || []).flatMap((m) => m.primitives);
}

function triangles(gltf) {
  return primitives(gltf).reduce((n, p) => n + gltf.json.accessors[p.indices].count / 3, 0);
}

// OBJ triangles (a face of n corners is n - 2) and the names of objects with faces.
function readObj(file) {
  let tris = 0;
  let current = null;
  const withFaces = new Set();
  for (const line of fs.readFileSync(file, 'utf8').split('\n')) {
    if (line.startsWith('o ')) current = line.slice(2);
    else if (line.startsWith('f ')) {
      tris += line.trim().split(/\s+/).length - 3;
      withFaces.add(current);
    }
  }
  return {triangles: tris, objects: [...withFaces]};
}

// The feature of a mesh path: the path up to the last feature element (capitalised, not gml:)
// before its first geometry element (gml: or lodN).
function featureOf(meshPath) {
  const parts = meshPath.split('\\');
  let end = 1;
  for (let i = 0; i < parts.length; i++) {
    const tag = parts[i].split('[')[0];
    const local = tag.includes(':') ? tag.split(':')[1] : tag;
    if (tag.startsWith('gml:') || /^lod\d/i.test(local)) break;
    if (i > 0 && /^[A-Z]/.test(local)) end = i + 1;
  }
  return parts.slice(0, end).join('\\');
}

async function validate(file) {
  const bytes = new Uint8Array(fs.readFileSync(file));
  return validator.validateBytes(bytes, {
    uri: path.basename(file),
    maxIssues: 0,
    externalResourceFunction: (uri) =>
      Promise.resolve(new Uint8Array(fs.readFileSync(path.join(path.dirname(file),
                                                               decodeURIComponent(uri))))),
  });
}

function run(tool, args) {
  try {
    return {ok: true, out: execFileSync(tool, args, {encoding: 'utf8', stdio: ['ignore', 'pipe', 'pipe']})};
  } catch (e) {
    return {ok: false, out: String(e.stdout) + String(e.stderr)};
  }
}

function cityGmlFiles(dir) {
  const out = [];
  for (const entry of fs.readdirSync(dir, {withFileTypes: true})) {
    const full = path.join(dir, entry.name);
    if (entry.isDirectory() && entry.name !== 'schemas') out.push(...cityGmlFiles(full));
    else if (/\.(gml|xml|citygml)$/i.test(entry.name)) out.push(full);
  }
  return out.sort();
}

module.exports = {readGltf, readVectors, primitives, triangles, readObj, featureOf, validate, run,
                  cityGmlFiles};
