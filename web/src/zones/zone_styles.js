/** How zones look. Who can't tell red from green tells the two kinds by their lines: whole or dashed. */

const OUTLINE = { weight: 2, opacity: 0.9, fillOpacity: 0.06, interactive: false };

const ALERT = { ...OUTLINE, color: '#c0392b', fillColor: '#c0392b' };
const PLAIN = { ...OUTLINE, color: '#1e7a4a', fillColor: '#1e7a4a', dashArray: '8 5' };
/** Under the hands of the user. */
const DRAWN = { weight: 3, opacity: 1, fillOpacity: 0.12 };
const NEW = { ...OUTLINE, color: '#1459b3', fillColor: '#1459b3' };

/** @param {{alert: boolean}} zone */
export function zoneStyle({ alert }) {
  return alert ? ALERT : PLAIN;
}

/** @param {{alert: boolean}|null} zone null for a new one, whose kind the page does not know */
export function drawnStyle(zone) {
  return { ...(zone ? zoneStyle(zone) : NEW), ...DRAWN };
}
