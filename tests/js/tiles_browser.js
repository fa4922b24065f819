// A tileset in CesiumJS in headless Chromium, served on a loopback port with nothing fetched from
// elsewhere: every tile loads, and the picture shows buildings where the data lies (the model's
// pixels gather around the data's centre on screen). The screenshot stays in the scratch folder.
// Usage: node tiles_browser.js GMLCODEC TESTDATA_DIR SCRATCH_DIR
'use strict';
const fs = require('fs');
const http = require('http');
const os = require('os');
const path = require('path');
const puppeteer = require('puppeteer-core');
const lib = require('./gltf_lib');

const [tool, data, scratch] = process.argv.slice(2);
const cesium = path.join(__dirname, 'node_modules/cesium/Build/Cesium');
const types = {'.js': 'text/javascript', '.html': 'text/html', '.json': 'application/json',
               '.css': 'text/css', '.glb': 'model/gltf-binary', '.wasm': 'application/wasm'};

(async () => {
  if (!fs.existsSync(data)) { console.log(`${data} is absent; skipped`); process.exit(77); }
  fs.rmSync(scratch, {recursive: true, force: true});
  const out = path.join(scratch, 'tiles');
  const input = path.join(data, 'citygml3/citygml4j_lod2_buildings_v3.gml');
  const made = lib.run(tool, ['tiles', input, out, '--tile-features', '15']);
  if (!made.ok) throw new Error(made.out);

  const outside = [];
  const server = http.createServer((req, res) => {
    const url = decodeURIComponent(req.url.split('?')[0]);
    const inside = (root, rest) => path.join(root, path.normalize('/' + rest));
    const file = url === '/' ? path.join(__dirname, 'tiles_page.html')
      : url.startsWith('/cesium/') ? inside(cesium, url.slice(8))
      : url.startsWith('/tiles/') ? inside(out, url.slice(7)) : null;
    if (!file || !fs.existsSync(file) || !fs.statSync(file).isFile()) {
      if (url !== '/favicon.ico') outside.push(url);
      res.writeHead(404); res.end(); return;
    }
    res.writeHead(200, {'Content-Type': types[path.extname(file)] || 'application/octet-stream'});
    fs.createReadStream(file).pipe(res);
  });
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  const origin = `http://127.0.0.1:${server.address().port}`;
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'gmlcodec-chromium-'));
  const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    headless: true,
    userDataDir: profile,
    args: ['--no-sandbox', '--disable-gpu', '--use-angle=swiftshader', '--enable-unsafe-swiftshader',
           '--disable-background-networking', '--disable-component-update', '--disable-sync',
           '--no-first-run'],
  });
  const failed = [];
  try {
    const page = await browser.newPage();
    // Nothing may leave the loopback server.
    await page.setRequestInterception(true);
    page.on('request', (r) => {
      if (r.url().startsWith(origin) || r.url().startsWith('data:') || r.url().startsWith('blob:')) r.continue();
      else { outside.push(r.url()); r.abort(); }
    });
    await page.setViewport({width: 640, height: 480});
    await page.goto(`${origin}/`);
    await page.waitForFunction('window.result !== undefined', {timeout: 180000});
    const result = await page.evaluate('window.result');
    const shot = path.join(scratch, 'tiles.png');
    await page.screenshot({path: shot});
    console.log(JSON.stringify(result), `screenshot ${shot}`);
    const glbs = fs.readdirSync(path.join(out, 'parts'), {recursive: true}).filter((f) => f.endsWith('.glb'));
    if (result.error) failed.push(`CesiumJS: ${result.error}`);
    else {
      if (result.failed.length) failed.push(`tiles failed: ${result.failed.join('; ')}`);
      if (result.loaded < glbs.length) failed.push(`${result.loaded} of ${glbs.length} tiles loaded`);
      if (result.model < result.total * 0.03) failed.push('the picture shows no buildings');
      if (result.globe < result.total * 0.05) failed.push('the picture shows no globe around them');
      const [w, h] = result.size;
      const off = result.centroid && result.centre ?
        Math.hypot(result.centroid[0] - result.centre[0], result.centroid[1] - result.centre[1]) : Infinity;
      if (!(off < Math.min(w, h) * 0.25)) failed.push(`the buildings lie ${off} px from the data's centre`);
    }
    if (outside.length) failed.push(`requests beyond the tileset and CesiumJS: ${outside.slice(0, 5).join(', ')}`);
  } finally {
    await browser.close();
    server.close();
    fs.rmSync(profile, {recursive: true, force: true});
  }
  for (const f of failed) console.log('FAIL', f);
  process.exit(failed.length ? 1 : 0);
})().catch((e) => { console.log('FAIL', e); process.exit(1); });
