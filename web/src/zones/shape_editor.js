/* global L */
/** The outline under the user's hands: placing of corners, dragging of handles, and taking steps back. */
import '../../lib/leaflet-editable.js';
import { clampLatitude } from '../base/earth.js';
import { chooseHandles } from './handles.js';
import { MOST_CORNERS } from './shape_rules.js';
import { ShapeHistory } from './shape_history.js';

/** A corner that is let go this near to a neighbour goes, pixels. */
const MERGE_REACH = 8;
const LEAST_TO_MERGE = 4;
/** Sides of a handle's box, pixels; most of the larger one is invisible. */
const HANDLE_SIZE = { mouse: 16, finger: 44 };
const PANE = 'drawing';

/** A corner's handle: it clings to what is near, and goes when it is dropped on a neighbour. */
const Handle = L.Editable.VertexMarker.extend({
  options: { keyboard: false, bubblingMouseEvents: false },

  onDragStart(event) {
    this._from = L.latLng(this.latlng.lat, this.latlng.lng);
    L.Editable.VertexMarker.prototype.onDragStart.call(this, event);
  },

  onDrag(event) {
    const under = this._map.layerPointToLatLng(L.DomUtil.getPosition(this._icon));
    const target = this.editor.targetOf(this, under, event.originalEvent);
    L.DomUtil.setPosition(this._icon, this._map.latLngToLayerPoint(target));
    L.Editable.VertexMarker.prototype.onDrag.call(this, event);
    this.latlng.update(target);
  },

  onDragEnd(event) {
    L.Editable.VertexMarker.prototype.onDragEnd.call(this, event);
    this.editor.dropped(this.latlng, this._from);
  },
});

/** Between two corners, to make another of. */
const MiddleHandle = L.Editable.MiddleMarker.extend({ options: { keyboard: false } });

const OutlineEditor = L.Editable.PolygonEditor.extend({
  /** Only handles in view exist, so that an outline of thousands of corners stays smooth. */
  addVertexMarkers(latlngs) {
    const points = latlngs.map((latlng) => this.map.latLngToContainerPoint(latlng));
    const chosen = new Set(chooseHandles(points, this.map.getSize()).map((index) => latlngs[index]));
    for (const latlng of latlngs) {
      if (latlng.__vertex && !chosen.has(latlng)) this.editLayer.removeLayer(latlng.__vertex);
    }
    for (const latlng of chosen) this.addVertexMarker(latlng, latlngs);
    this.hiddenHandles = points.length - chosen.size;
  },

  /** A click takes no corner away. */
  onVertexRawMarkerClick() {},

  onMiddleMarkerMouseDown(event) {
    // The other buttons only open the client's menu.
    if (event.originalEvent.button > 0 || this.owner.isFull()) event.cancel();
    L.Editable.PolygonEditor.prototype.onMiddleMarkerMouseDown.call(this, event);
  },

  onNewVertex(vertex) {
    this.owner.added(vertex.getIndex());
    L.Editable.PolygonEditor.prototype.onNewVertex.call(this, vertex);
  },

  onDrawingMouseMove(event) {
    event.latlng = this.owner.snapped(event.latlng, event.originalEvent);
    L.Editable.PolygonEditor.prototype.onDrawingMouseMove.call(this, event);
  },

  processDrawingClick(event) {
    if (this.owner.isFull()) return;
    event.latlng = this.owner.snapped(event.latlng, event.originalEvent);
    L.Editable.PolygonEditor.prototype.processDrawingClick.call(this, event);
  },

  onCommitDrawing(event) {
    this.owner.closedByUser = true;
    L.Editable.PolygonEditor.prototype.onCommitDrawing.call(this, event);
  },

  onEndDrawing() {
    L.Editable.PolygonEditor.prototype.onEndDrawing.call(this);
    this.owner.placingEnded();
  },

  targetOf(handle, under, mouse) {
    return this.owner.mergeTarget(handle.latlng, under) ?? this.owner.snapped(under, mouse);
  },

  dropped(latlng, from) {
    this.owner.dropped(latlng, from);
  },
});

const Tools = L.Editable.extend({
  options: {
    polygonEditorClass: OutlineEditor,
    vertexMarkerClass: Handle,
    middleMarkerClass: MiddleHandle,
    lineGuideOptions: { pane: PANE, className: 'zone-guide' },
  },

  createVertexIcon({ className }) {
    const size = matchMedia('(pointer: coarse)').matches ? HANDLE_SIZE.finger : HANDLE_SIZE.mouse;
    return new L.DivIcon({ className: `${className} zone-handle`, iconSize: [size, size] });
  },
});

export class ShapeEditor {
  /**
   * @param {L.Map} map
   * @param {{snap: function(L.LatLng): L.LatLng, changed: function(): void, full: function(): void}} wishes snap
   *     gives the place to use for a place under the pointer, full is called when no corner can be added
   */
  constructor(map, { snap, changed, full }) {
    this.map = map;
    this.snap = snap;
    this.changed = changed;
    this.full = full;
    this.history = new ShapeHistory();
    this.tools = new Tools(map);
    /** Corners are still being placed one after the other. */
    this.isPlacing = false;
    this.closedByUser = false;
    this.freshIndex = null;
  }

  /** @param {number[][]} corners [latitude, longitude]; with none, placing begins @param {object} style */
  start(corners, style) {
    this.polygon = this.tools.createPolygon(corners, { ...style, pane: PANE, interactive: false });
    this.polygon.addTo(this.map);
    this.editor = this.polygon.enableEdit(this.map);
    this.editor.owner = this;
    if (corners.length === 0) this.placeOn();
  }

  /** @returns {L.LatLng[]} */
  get ring() {
    return this.polygon.getLatLngs()[0];
  }

  get corners() {
    return this.ring.map(({ lat, lng }) => [lat, lng]);
  }

  /** Some corners are too close together to have handles. */
  get hasHiddenHandles() {
    return this.editor.hiddenHandles > 0;
  }

  stop() {
    this.stopped = true;
    if (this.isPlacing) this.editor.setDrawnLatLngs([0, 0, 0]);
    this.polygon.disableEdit();
    this.polygon.remove();
    this.tools.editLayer.remove();
    this.tools.featuresLayer.remove();
  }

  /** Begins or goes on placing corners behind the last one. */
  placeOn() {
    this.isPlacing = true;
    this.closedByUser = false;
    this.editor.setDrawnLatLngs(this.ring);
    this.editor.startDrawing();
    this.showGuides();
  }

  /** The lines from the ends of the outline to the pointer. */
  showGuides() {
    const ring = this.ring;
    this.tools.detachForwardLineGuide();
    this.tools.detachBackwardLineGuide();
    if (!this.isPlacing || ring.length === 0) return;
    this.tools.attachForwardLineGuide();
    this.tools.anchorForwardLineGuide(ring.at(-1));
    this.tools.anchorBackwardLineGuide(ring[0]);
    if (ring.length > 1) this.tools.attachBackwardLineGuide();
  }

  aimGuidesAt(latlng) {
    this.tools.moveForwardLineGuide(latlng);
    this.tools.moveBackwardLineGuide(latlng);
  }

  /** Places the next corner. */
  place(latlng) {
    if (!this.isFull()) this.editor.push(latlng);
  }

  /** Ends the placing: the outline is closed, its corners can be moved. */
  close() {
    this.editor.commitDrawing();
  }

  /** Adds a corner to a closed outline. */
  insert(index, latlng) {
    if (this.isFull()) return;
    this.ring.splice(index, 0, latlng);
    this.history.added(index);
    this.renew();
  }

  /** Shows a corner elsewhere, until drop() makes it a step. */
  carry(index, latlng) {
    const corner = this.ring[index];
    corner.update(latlng);
    corner.__vertex?.update();
    for (const handle of [corner.__vertex, corner.__vertex?.getNext()]) handle?.middleMarker?.updateLatLng();
    this.editor.refresh();
  }

  /** Ends carrying: next to a neighbour the corner goes. */
  drop(index, from) {
    const latlng = this.ring[index];
    latlng.update(this.mergeTarget(latlng, latlng) ?? latlng);
    this.dropped(latlng, from);
  }

  undo() {
    this.freshIndex = null;
    const kind = this.history.undo(this.ring);
    if (!kind) return;
    if (kind === 'closed') this.placeOn();
    this.renew();
  }

  /** Shifts the whole shape by turns of the world: the map has jumped there. */
  turn(turns) {
    for (const latlng of this.ring) latlng.lng += 360 * turns;
    for (const { from, was } of this.history.steps) {
      if (from) from.lng += 360 * turns;
      if (was) was.lng += 360 * turns;
    }
    this.renew();
  }

  renew() {
    this.polygon.setLatLngs([this.ring]);
    if (this.isPlacing) this.editor.setDrawnLatLngs(this.ring);
    this.editor.reset();
    this.showGuides();
    this.changed();
  }

  isFull() {
    if (this.ring.length < MOST_CORNERS) return false;
    this.full();
    return true;
  }

  snapped(latlng, mouse) {
    const place = mouse?.altKey ? latlng : this.snap(latlng);
    return L.latLng(clampLatitude(place.lat), place.lng);
  }

  /** The neighbour that a corner would become one with, or null. */
  mergeTarget(latlng, under) {
    const ring = this.ring;
    if (this.isPlacing || ring.length < LEAST_TO_MERGE) return null;
    const index = ring.indexOf(latlng);
    const neighbours = [ring.at(index - 1), ring[(index + 1) % ring.length]];
    const point = this.map.latLngToContainerPoint(under);
    const reach = (other) => this.map.latLngToContainerPoint(other).distanceTo(point);
    return neighbours.find((other) => reach(other) <= MERGE_REACH) ?? null;
  }

  added(index) {
    this.freshIndex = index;
    this.history.added(index);
    this.changed();
  }

  dropped(latlng, from) {
    const index = this.ring.indexOf(latlng);
    const isNew = !this.isPlacing && this.freshIndex === index;
    this.freshIndex = null;
    if (this.mergeTarget(latlng, latlng)?.equals(latlng, 0)) {
      this.ring.splice(index, 1);
      this.history.removed(index, from, isNew);
      return this.renew();
    }
    if (!latlng.equals(from, 0)) this.history.moved(index, from, isNew);
    this.changed();
  }

  placingEnded() {
    if (this.stopped || !this.isPlacing || !this.closedByUser) return;
    this.isPlacing = false;
    this.freshIndex = null;
    this.history.closed();
    this.renew();
  }
}
