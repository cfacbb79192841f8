/* global L */
/** Builds the page step by step, telling the client of each, and then follows what the client writes. */
import { loadBytes, loadJson } from './base/loading.js';
import { positionText } from './base/positions.js';
import { BaseMap, loadBaseMap, loadDetail } from './base_map/base_map.js';
import { Graticule } from './base_map/graticule.js';
import { MAP_TYPES } from './base_map/map_types.js';
import { OnlineMap } from './base_map/online_map.js';
import { Pictures } from './base_map/pictures.js';
import { createCommandSender } from './bridge/command_sender.js';
import { placeCommand, statusCommand, tileCommand } from './bridge/commands.js';
import { FieldQueue } from './bridge/field_queue.js';
import {
  parseCentre,
  parseFit,
  parseGeneration,
  parseSwitch,
  parseViewHeight,
  parseViewWidth,
  whenRead,
} from './bridge/fields.js';
import { Pointer } from './bridge/pointer.js';
import { ViewReporter } from './bridge/view_reporter.js';
import { Credits } from './controls/credits.js';
import { MapTypeControl } from './controls/map_type_control.js';
import { Notices } from './controls/notices.js';
import { Orientation } from './controls/orientation.js';
import { MapView } from './map_view.js';
import { fileNameOf } from './tiles/tile_names.js';
import { TileQuestions } from './tiles/tile_questions.js';
import { TrackLayer } from './tiles/track_layer.js';
import { ZoneFields } from './zones/zone_fields.js';
import { ZoneLayer } from './zones/zone_layer.js';

const fields = new FieldQueue();
fields.watch(document.forms.Form1);
const sender = createCommandSender();
const send = (command) => sender.send(command);
const reached = (step) => send(statusCommand(step));
const baseMapData = loadBaseMap();

const query = new URLSearchParams(location.search);
const view = new MapView(
  document.getElementById('map'),
  parseViewWidth(query.get('X') ?? '') ?? window.innerWidth,
  parseViewHeight(query.get('Y') ?? '') ?? window.innerHeight,
);
const map = view.map;
reached(1);

view.createPanes();
const notices = new Notices(view.element);
reached(2);

const credits = new Credits().addTo(map);
reached(3);

const fillTile = { T: (...answer) => tracks.fill(...answer), Z: (...answer) => zones.tiles.fill(...answer) };
const questions = new TileQuestions(
  (kind, suffix) => send(tileCommand(kind, suffix)),
  (kind, suffix, fileName) => fillTile[kind](suffix, fileName),
);
const tracks = new TrackLayer(questions);
reached(4);

const zones = new ZoneLayer(map, questions);
zones.setVisible(true);
const zoneFields = new ZoneFields({ zones, notices, send });
reached(5);

const pictures = new Pictures(() => baseMap.repaint());
const baseMap = new BaseMap(MAP_TYPES.Map, pictures);
baseMap.addTo(map);
reached(6);

tracks.addTo(map);
reached(7);

const pointer = new Pointer(map, send);
pointer.listenToRightClicks();
reached(8);
pointer.listenToMoves();
reached(9);
pointer.listenToLeftClicks();
reached(10);

view.showFirstView();
reached(11);

const graticule = new Graticule(MAP_TYPES.Map);
graticule.addTo(map);
addScale();
const orientation = new Orientation().addTo(map);
reached(12);

questions.start();
reached(13);

addZoomControl();
reached(14);

const onlineMap = new OnlineMap(map, credits);
const mapTypes = new MapTypeControl(setMapType).addTo(map);
setMapType('Map');
reached(15);

new ViewReporter(view, send).start();
reached(16);

let tellPlaces;
/** Fulfilled with the finder of places, or with null when their names can't be had. */
const places = new Promise((resolve) => (tellPlaces = resolve));
const answerPlace = async () => {
  const { lat, lng } = view.centre();
  const position = pointer.rightClicked ?? [lat, lng];
  const finder = await places;
  send(placeCommand(finder ? finder.describe(...position) : positionText(...position)));
};
reached(17);

fields.start({
  TxtX: (text) => whenRead(parseViewWidth(text), (width) => view.resize(width, view.height)),
  TxtY: (text) => whenRead(parseViewHeight(text), (height) => view.resize(view.width, height)),
  TxtF: (text) => whenRead(parseFit(text), (fit) => view.fit(fit)),
  TxtL: (text) => whenRead(parseFit(text), (fit) => view.fit(fit)),
  TxtP: (text) => whenRead(parseCentre(text), (centre) => view.pan(centre)),
  TxtR: (text) => whenRead(parseGeneration(text), renewTiles),
  TxtTT: (text) => questions.answer('T', fileNameOf(text)),
  TxtTZ: (text) => questions.answer('Z', fileNameOf(text)),
  TxtM: (text) => whenRead(parseSwitch(text), setMapDataVisible),
  TxtT: (text) => whenRead(parseSwitch(text), (visible) => shownOrNot(visible)(tracks)),
  TxtMT: setMapType,
  TxtSV: (text) => whenRead(parseSwitch(text), (wanted) => notices.setStreetOverlay(wanted)),
  txtPn: (text) => whenRead(parseSwitch(text), (wanted) => notices.setPanorama(wanted)),
  TxtG: (text) => whenRead(parseSwitch(text), (wanted) => wanted && answerPlace()),
  ...zoneFields.handlers(),
});

baseMapData
  .then((regions) => baseMap.setShapes(regions))
  .catch((error) => tellMissing('base map', 'Tracks and zones are shown without it.', error))
  .finally(() => reached(99))
  .then(loadTheRest);

/** What the first view can do without. */
async function loadTheRest() {
  const parts = [
    loadJson('settings.json').then(({ onlineMap: online }) => onlineMap.set(online)),
    Promise.all([import('./labels/named_map.js'), loadBytes('../data/names.bin')]).then(setNames),
    baseMapData.then(loadDetail).then((detail) => baseMap.setDetail(detail)),
    Promise.all([import('./zones/drawing.js'), import('./zones/drawing_tools.js')]).then(setDrawing),
  ];
  const results = await Promise.allSettled(parts);
  tellPlaces(null);
  zoneFields.setDrawing(null);
  for (const { reason } of results) if (reason) console.error(`a part of the map: ${reason.message}`);
}

function setDrawing([{ ZoneDrawing }, tools]) {
  zoneFields.setDrawing(new ZoneDrawing({ map, zones, notices, send }, tools));
}

function setNames([{ namedMap }, bytes]) {
  const { labels, finder, preparations } = namedMap(bytes);
  baseMap.setLabels(labels);
  whenIdle(preparations);
  orientation.setPlaces((latitude, longitude) => finder.describe(latitude, longitude));
  tellPlaces(finder);
}

/** Runs steps one by one, each when the page has nothing better to do. */
function whenIdle(steps) {
  const [first, ...others] = steps;
  if (!first) return;
  requestIdleCallback(() => {
    first();
    whenIdle(others);
  });
}

function tellMissing(what, consequence, error) {
  console.error(`${what}: ${error.message}`);
  notices.show(what, `The ${what} could not be loaded. ${consequence}`);
}

function shownOrNot(visible) {
  return (layer) => (visible ? layer.addTo(map) : layer.remove());
}

function renewTiles(generation) {
  tracks.renew(generation);
  zones.tiles.renew();
}

function setMapDataVisible(visible) {
  [baseMap, graticule].forEach(shownOrNot(visible));
  onlineMap.setVisible(visible);
}

function setMapType(name) {
  if (!Object.hasOwn(MAP_TYPES, name)) return;
  const palette = MAP_TYPES[name];
  view.element.style.background = palette.water;
  view.element.classList.toggle('dark-map', palette.dark);
  zones.setDark(palette.dark);
  baseMap.setPalette(palette);
  graticule.setPalette(palette);
  orientation.setPicture(palette.note ?? null);
  onlineMap.setWanted(name === 'Map');
  mapTypes.mark(name);
  for (const picture of Object.values(palette.pictures ?? {})) {
    pictures.want(picture).catch((error) => tellMissing('picture', 'The map is drawn without it.', error));
  }
}

/** The library makes the two buttons as links; without an address they can't lead the page away. */
function addZoomControl() {
  const box = L.control.zoom().addTo(map).getContainer();
  box.setAttribute('role', 'group');
  box.setAttribute('aria-label', 'Zoom');
  for (const link of box.querySelectorAll('a')) {
    link.removeAttribute('href');
    link.tabIndex = 0;
    // What is no link and no button is not pressed by keyboard on its own.
    link.addEventListener('keydown', (event) => {
      if (event.key !== 'Enter' && event.key !== ' ') return;
      event.preventDefault();
      link.click();
    });
  }
}

function addScale() {
  const box = L.control.scale({ maxWidth: 140 }).addTo(map).getContainer();
  box.setAttribute('role', 'group');
  box.setAttribute('aria-label', 'Scale');
}
