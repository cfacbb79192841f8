/* global L */
/** What can be done with the outline that is being drawn: a line of help and three buttons. */

export const DrawingBar = L.Control.extend({
  options: { position: 'topleft' },

  /** @param {{undo: function(): void, finish: function(): void, cancel: function(): void}} actions */
  initialize(actions) {
    this._actions = actions;
  },

  onAdd() {
    const bar = L.DomUtil.create('div', 'drawing-bar leaflet-bar');
    bar.setAttribute('role', 'group');
    bar.setAttribute('aria-label', 'Zone outline');
    this._title = L.DomUtil.create('strong', '', bar);
    this._help = L.DomUtil.create('span', 'help', bar);
    this._help.setAttribute('role', 'status');
    const row = L.DomUtil.create('div', 'row', bar);
    this._undo = this._addButton(row, 'Undo point', this._actions.undo);
    this._finish = this._addButton(row, 'Finish', this._actions.finish);
    this._addButton(row, 'Cancel', this._actions.cancel);
    L.DomEvent.disableClickPropagation(bar);
    return bar;
  },

  /** The press must not take the keyboard away from where the client keeps it. */
  _addButton(row, name, act) {
    const button = L.DomUtil.create('button', '', row);
    button.type = 'button';
    button.textContent = name;
    button.addEventListener('mousedown', (event) => event.preventDefault());
    button.addEventListener('click', act);
    return button;
  },

  /** @param {{title: string, help: string, canUndo: boolean, canFinish: boolean}} state */
  show({ title, help, canUndo, canFinish }) {
    if (this._title.textContent !== title) this._title.textContent = title;
    if (this._help.textContent !== help) this._help.textContent = help;
    this._undo.disabled = !canUndo;
    this._finish.disabled = !canFinish;
  },
});
