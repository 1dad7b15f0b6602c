// SPDX-License-Identifier: MIT
'use strict';

const POLL_MILLISECONDS = 500;
const KEYS = {p: 'pause', r: 'resume', u: 'update', q: 'stop'};

const part = id => document.getElementById(id);
let shownImage = 0;
// What the user is dragging isn't set back by an answer that is older than the drag.
let held = null;
let ended = false;

function showFault(text) {
    part('fault').hidden = text === '';
    part('fault').textContent = text;
}

async function act(action) {
    try {
        const response = await fetch('action', {method: 'POST', body: action});
        showFault(response.ok ? '' : await response.text());
    } catch (error) {
        showFault('The renderer does not answer: it may have ended.');
    }
}

// A change shows in the next image only, which may be minutes away: ask for it.
async function adjust(action) {
    await act(action);
    await act('update');
}

function clockText(seconds) {
    const whole = Math.floor(seconds);
    return `${Math.floor(whole / 60)}:${String(whole % 60).padStart(2, '0')}`;
}

// Makes the children of `holder` anew only when their keys have changed, so that the keyboard's focus stays.
function keepRows(holder, keys, make) {
    const wanted = JSON.stringify(keys);
    if (holder.dataset.keys !== wanted) {
        holder.dataset.keys = wanted;
        holder.replaceChildren(...keys.map(make));
    }
}

function slider(id, label, number, change) {
    const row = document.createElement('div');
    row.className = 'number';
    const name = document.createElement('label');
    name.htmlFor = id;
    name.textContent = label;
    const range = document.createElement('input');
    Object.assign(range, {type: 'range', id, min: number.minimum, max: number.maximum, step: number.step});
    const shown = document.createElement('output');
    shown.htmlFor = id;
    range.addEventListener('input', () => { held = range; shown.textContent = range.value; });
    range.addEventListener('change', async () => { await change(range.value); held = null; });
    row.append(name, range, shown);
    return row;
}

function setSlider(id, value) {
    const range = part(id);
    if (range && range !== held) {
        range.value = value;
        range.parentElement.querySelector('output').textContent = String(Math.round(value * 1000) / 1000);
    }
}

function fillSelect(select, choices, value) {
    keepRows(select, choices.map(choice => [choice.value, choice.label]), ([key, label]) => new Option(label, key));
    if (document.activeElement !== select || select.dataset.sent === '1') {
        select.value = value;
        select.dataset.sent = '';
    }
}

function showTonemapping(state) {
    for (const radio of document.querySelectorAll('input[name="method"]')) {
        radio.checked = radio.value === state.method;
    }
    // Numbers are called "method name".
    const own = state.numbers.filter(number => number.name.startsWith(`${state.method} `));
    keepRows(part('numbers'), own.map(number => number.name), name => {
        const number = own.find(candidate => candidate.name === name);
        const word = name.split(' ')[1];
        return slider(`number-${word}`, number.label, number, value => adjust(`tonemap ${state.method} ${word}=${value}`));
    });
    own.forEach(number => setSlider(`number-${number.name.split(' ')[1]}`, number.value));
    part('tonemapping').hidden = state.method === '';
    part('responseRow').hidden = state.method !== 'camera';
    fillSelect(part('response'), state.responses, state.response);
    fillSelect(part('whitePoint'), state.whitePoints, state.whitePoint);
}

function layerRow(state, index) {
    const layer = state.layers.find(candidate => candidate.index === index);
    const row = document.createElement('div');
    row.className = 'layer';
    const label = document.createElement('label');
    const box = document.createElement('input');
    Object.assign(box, {type: 'checkbox', id: `layer-${index}-on`});
    box.addEventListener('change', () => adjust(`layer ${index} ${box.checked ? 'on' : 'off'}`));
    label.append(box, ` ${layer.name}`);
    const number = {minimum: 0, maximum: 5, step: 0.05};
    row.append(label, slider(`layer-${index}-gain`, 'Gain', number, value => adjust(`layer ${index} gain=${value}`)));
    return row;
}

function showLayers(state) {
    part('layerSet').hidden = state.layers.length === 0;
    keepRows(part('layers'), state.layers.map(layer => [layer.index, layer.name]), ([index]) => layerRow(state, index));
    for (const layer of state.layers) {
        part(`layer-${layer.index}-on`).checked = layer.enabled;
        setSlider(`layer-${layer.index}-gain`, layer.gain);
    }
}

function showImage(state) {
    if (state.image === shownImage) {
        return;
    }
    // Loaded aside: should the program end meanwhile, the last image stays.
    const loaded = part('image').cloneNode();
    loaded.onload = () => {
        part('image').replaceWith(loaded);
        part('waiting').hidden = true;
    };
    loaded.onerror = () => {
        shownImage = 0;
    };
    shownImage = state.image;
    loaded.width = state.width;
    loaded.height = state.height;
    loaded.hidden = false;
    loaded.src = `image.png?${state.image}`;
}

function show(state) {
    document.title = `${state.status || state.phase} – ${state.document}`;
    part('document').textContent = state.document;
    part('status').textContent = state.phase === 'ended' ? 'Ended' : state.status || '\u00a0';
    part('bar').hidden = state.percent < 0 || state.phase === 'ended';
    part('bar').value = Math.max(0, state.percent);
    part('samples').textContent = state.samples < 0 ? '–' : state.samples.toFixed(1);
    part('seconds').textContent = clockText(state.seconds);
    part('images').textContent = state.image;
    part('pause').disabled = state.phase !== 'rendering';
    part('resume').disabled = state.phase !== 'paused';
    part('update').disabled = part('stop').disabled = state.phase === 'ended';
    part('tonemapping').disabled = part('layerSet').disabled = state.phase === 'ended';
    showImage(state);
    showTonemapping(state);
    showLayers(state);
    if (state.failure) {
        showFault(state.failure);
    }
    ended = state.phase === 'ended';
}

async function poll() {
    try {
        show(await (await fetch('state')).json());
    } catch (error) {
        showFault('The renderer does not answer: it may have ended.');
    }
    if (!ended) {
        setTimeout(poll, POLL_MILLISECONDS);
    }
}

for (const button of document.querySelectorAll('button[data-action]')) {
    button.addEventListener('click', () => act(button.dataset.action));
}
for (const radio of document.querySelectorAll('input[name="method"]')) {
    radio.addEventListener('change', () => adjust(`tonemap ${radio.value}`));
}
for (const [id, words] of [['response', 'tonemap camera response='], ['whitePoint', 'whitepoint ']]) {
    part(id).addEventListener('change', async event => {
        await adjust(words + event.target.value);
        event.target.dataset.sent = '1';
    });
}
document.addEventListener('keydown', event => {
    const typing = event.target.matches('select, input:not([type="range"]):not([type="checkbox"]):not([type="radio"])');
    if (!typing && !event.ctrlKey && !event.altKey && !event.metaKey && KEYS[event.key]) {
        const button = part(KEYS[event.key]);
        if (!button.disabled) {
            button.click();
        }
    }
});
poll();
