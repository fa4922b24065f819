// A textured GLB in a real browser: headless Chromium loads it with three.js's GLTFLoader; the
// loaded triangles must be the tool's and the picture must show the model. The screenshot stays
// in the scratch folder. Usage: node gltf_browser.js GMLCODEC TESTDATA_DIR SCRATCH_DIR
'use strict';
const fs = require('fs');
const http = require('http');
const os = require('os');
const path = require('path');
const puppeteer = require('puppeteer-core');
const lib = require('./gltf_lib');

const [tool, , scratch] = process.argv.slice(2);
const example = path.join(__dirname, '../../examples/small_house.gml');
const three = path.join(__dirname, 'node_modules/three');

(async () => {
  fs.mkdirSync(scratch, {recursive: true});
  const glb = path.join(scratch, 'small_house.glb');
  const converted = lib.run(tool, ['convert', example, glb]);
  if (!converted.ok) throw new Error(converted.out);
  const expected = lib.triangles(lib.readGltf(glb));

  const server = http.createServer((req, res) => {
    const url = decodeURIComponent(req.url.split('?')[0]);
    const file = url === '/' ? path.join(__dirname, 'browser_page.html')
      : url === '/model.glb' ? glb
      : url.startsWith('/three/') ? path.join(three, path.normalize(url.slice(7)).replace(/^(\.\.[/\\])+/, ''))
      : null;
    if (!file || !fs.existsSync(file)) { res.writeHead(404); res.end(); return; }
    const type = file.endsWith('.js') ? 'text/javascript' : file.endsWith('.html') ? 'text/html'
      : 'application/octet-stream';
    res.writeHead(200, {'Content-Type': type});
    fs.createReadStream(file).pipe(res);
  });
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'gmlcodec-chromium-'));
  const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    headless: true,
    userDataDir: profile,
    args: ['--no-sandbox', '--disable-gpu', '--use-angle=swiftshader', '--enable-unsafe-swiftshader',
           '--disable-background-networking', '--disable-component-update', '--disable-sync',
           '--no-first-run'],
  });
  let failed = [];
  try {
    const page = await browser.newPage();
    await page.setViewport({width: 480, height: 360});
    await page.goto(`http://127.0.0.1:${server.address().port}/`);
    await page.waitForFunction('window.result !== undefined', {timeout: 60000});
    const result = await page.evaluate('window.result');
    if (result.error) failed.push(`three.js could not load the GLB: ${result.error}`);
    else if (result.triangles !== expected)
      failed.push(`three.js loaded ${result.triangles} triangles, the GLB holds ${expected}`);
    const shot = path.join(scratch, 'small_house.png');
    await page.screenshot({path: shot});
    // Pixels of the model: neither the white background nor black.
    const stats = await page.evaluate(() => {
      const canvas = document.querySelector('canvas');
      const copy = document.createElement('canvas');
      copy.width = canvas.width; copy.height = canvas.height;
      const ctx = copy.getContext('2d');
      ctx.drawImage(canvas, 0, 0);
      const d = ctx.getImageData(0, 0, copy.width, copy.height).data;
      let model = 0, black = 0;
      for (let i = 0; i < d.length; i += 4) {
        const sum = d[i] + d[i + 1] + d[i + 2];
        if (sum < 30) black++;
        else if (sum < 750) model++;
      }
      return {model, black, total: d.length / 4};
    });
    console.log(`loaded ${expected} triangles; model pixels ${stats.model} of ${stats.total}, ` +
                `black ${stats.black}; screenshot ${shot}`);
    if (stats.model < stats.total * 0.05) failed.push('the picture does not show the model');
    if (stats.black > stats.total * 0.5) failed.push('the picture is mostly black');
  } finally {
    await browser.close();
    server.close();
    fs.rmSync(profile, {recursive: true, force: true});
  }
  for (const f of failed) console.log('FAIL', f);
  process.exit(failed.length ? 1 : 0);
})().catch((e) => { console.log('FAIL', e); process.exit(1); });
