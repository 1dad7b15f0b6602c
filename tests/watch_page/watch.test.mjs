// SPDX-License-Identifier: MIT
// The page of `picture --watch`, as a person uses it: in a browser, on a real render.
import assert from 'node:assert/strict';
import {spawn} from 'node:child_process';
import {existsSync, mkdtempSync, rmSync} from 'node:fs';
import http from 'node:http';
import {tmpdir} from 'node:os';
import {join} from 'node:path';
import {after, before, test} from 'node:test';
import {chromium} from 'playwright-core';

const PROGRAM = join(process.env.QUENZA_BIN_DIR, 'quenza-headless');
const DOCUMENT = join(process.env.QUENZA_SOURCE_DIR, 'examples', 'light-layers.json');
const CHROMIUM_FLAGS = ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-sync',
                        '--disable-background-networking', '--disable-component-update'];
// Machines that build are slow and busy: nothing is expected to be quick, only to come.
const PATIENCE = {timeout: 120_000, polling: 200};

const folder = mkdtempSync(join(tmpdir(), 'quenza-watch-'));
const image = join(folder, 'picture.png');
let render, ended, address, browser, page;
const faults = [];

// The program says where its page is, then goes on with the render.
function startRender() {
    render = spawn(PROGRAM, ['picture', DOCUMENT, '--image', image, '--size', '96x64', '--set', 'RS_HALT_SPP=-1',
                             '--watch', '0'], {stdio: ['ignore', 'pipe', 'pipe']});
    ended = new Promise(resolve => render.on('exit', (code, signal) => resolve(code ?? signal)));
    return new Promise((resolve, reject) => {
        let text = '';
        const read = chunk => {
            text += chunk;
            const found = text.match(/http:\/\/127\.0\.0\.1:(\d+)\//);
            if (found) {
                resolve(found[0]);
            }
        };
        render.stdout.on('data', read);
        render.stderr.on('data', read);
        render.on('exit', () => reject(new Error(`the render ended early:\n${text}`)));
    });
}

// Mean red and blue of what the page shows, 0 to 255.
function colours() {
    return page.evaluate(async () => {
        const shown = document.getElementById('image');
        await shown.decode();
        const canvas = Object.assign(document.createElement('canvas'), {width: shown.naturalWidth, height: shown.naturalHeight});
        const context = canvas.getContext('2d');
        context.drawImage(shown, 0, 0);
        const data = context.getImageData(0, 0, canvas.width, canvas.height).data;
        let red = 0, blue = 0;
        for (let i = 0; i < data.length; i += 4) {
            red += data[i];
            blue += data[i + 2];
        }
        return {width: canvas.width, height: canvas.height, red: red / (data.length / 4), blue: blue / (data.length / 4)};
    });
}

const imageCount = async () => Number(await page.textContent('#images'));

// Waits until `holds` is true of the image's colours; each image that comes is looked at.
async function waitForColours(holds, what) {
    const end = Date.now() + PATIENCE.timeout;
    let seen;
    do {
        seen = await colours();
        if (holds(seen)) {
            return seen;
        }
        await new Promise(resolve => setTimeout(resolve, PATIENCE.polling));
    } while (Date.now() < end);
    assert.fail(`${what}; the page says "${await page.textContent("#fault")}", the image has red ${seen.red}, blue ${seen.blue}`);
}

function ask(path, headers, method = 'GET') {
    return new Promise((resolve, reject) => {
        const {port} = new URL(address);
        const request = http.request({host: '127.0.0.1', port, path, method, headers}, response => {
            response.resume();
            response.on('end', () => resolve(response.statusCode));
        });
        request.on('error', reject);
        request.end(method === 'POST' ? 'stop' : undefined);
    });
}

before(async () => {
    address = await startRender();
    browser = await chromium.launch({executablePath: process.env.CHROMIUM, args: CHROMIUM_FLAGS});
    page = await browser.newPage();
    page.on('pageerror', error => faults.push(error.message));
    page.on('console', message => message.type() === 'error' && faults.push(message.text()));
    await page.goto(address);
});

after(async () => {
    await browser?.close();
    if (render?.exitCode === null) {
        render.kill('SIGKILL');
    }
    rmSync(folder, {recursive: true, force: true});
});

test('the image comes and grows', async () => {
    await page.waitForFunction(() => document.getElementById('image').naturalWidth > 0, null, PATIENCE);
    const first = await colours();
    assert.deepEqual([first.width, first.height], [96, 64]);
    assert.ok(first.red > 10, 'the scene is lit');
    const count = await imageCount();
    await page.click('#update');
    await page.waitForFunction(before => Number(document.getElementById('images').textContent) > before, count, PATIENCE);
    await page.waitForFunction(() => document.getElementById('status').textContent.startsWith('Rendering: '), null, PATIENCE);
});

test('a layer\'s gain and a method\'s number change the image, by the keyboard alone', async () => {
    const before = await colours();
    await page.focus('#layer-0-gain');
    await page.keyboard.press('Home');
    const dark = await waitForColours(seen => seen.red < before.red * 0.8, 'the warm lamp is still on');
    assert.ok(dark.blue > 2, 'the cool lamp has stayed');
    await page.check('input[name="method"][value="linear"]');
    await page.waitForSelector('#number-scale', PATIENCE);
    await page.focus('#number-scale');
    await page.keyboard.press('Home');
    await waitForColours(seen => seen.blue < dark.blue * 0.5, 'the scale has no effect');
});

test('keys pause and resume', async () => {
    await page.focus('#pause');
    await page.keyboard.press('p');
    await page.waitForFunction(() => document.getElementById('status').textContent.startsWith('Paused: '), null, PATIENCE);
    const samples = await page.textContent('#samples');
    await page.keyboard.press('u');
    const count = await imageCount();
    await page.waitForFunction(before => Number(document.getElementById('images').textContent) > before, count, PATIENCE);
    assert.equal(await page.textContent('#samples'), samples);
    await page.keyboard.press('r');
    await page.waitForFunction(before => document.getElementById('samples').textContent !== before, samples, PATIENCE);
});

test('other origins get nothing', async () => {
    const {host} = new URL(address);
    assert.equal(await ask('/state', {Host: host}), 200);
    for (const [path, headers, method] of [['/state', {Host: host, Origin: 'http://example.org'}],
                                           ['/state', {Host: 'example.org'}],
                                           ['/image.png', {Host: host, 'Sec-Fetch-Site': 'cross-site'}],
                                           ['/action', {Host: host, Origin: 'null'}, 'POST']]) {
        assert.equal(await ask(path, headers, method), 403, `${path} ${JSON.stringify(headers)}`);
    }
});

test('stop ends the render, and every page keeps its last image', async () => {
    const other = await browser.newPage();
    await other.goto(address);
    await other.waitForFunction(() => document.getElementById('image').naturalWidth > 0, null, PATIENCE);
    await page.click('#stop');
    assert.equal(await ended, 0);
    assert.ok(existsSync(image));
    for (const shown of [page, other]) {
        await shown.waitForFunction(() => document.getElementById('status').textContent === 'Ended', null, PATIENCE);
        assert.equal(await shown.textContent('#fault'), '');
        const [address, width] = await shown.evaluate(() => [document.getElementById('image').src, document.getElementById('image').naturalWidth]);
        assert.equal(address.split('?')[1], await shown.textContent('#images'));
        assert.equal(width, 96);
    }
    // Pages of a render that has ended ask no more.
    assert.deepEqual(faults, []);
});
