/**
 * Notices every write of the client into the page's form and hands the texts out in the order written.
 *
 * The client only sets a field's value: no event follows, and the same text may be written twice. So the
 * value property of each field is replaced by one of ours. A handler never runs inside the client's write:
 * what it starts (a zoom, a question) would otherwise happen in the middle of the client's own work.
 */
export class FieldQueue {
  /** @param {function(function(): void): void} defer runs a function soon, after the current script */
  constructor(defer = (run) => queueMicrotask(run)) {
    this.defer = defer;
    this.writes = [];
    this.handlers = null;
    this.scheduled = false;
  }

  /** Takes over every named field of a form; a value that is there already counts as written. */
  watch(form) {
    for (const field of form.elements) this.watchField(field);
  }

  watchField(field) {
    const name = field.name;
    const early = field.value;
    let text = '';
    Object.defineProperty(field, 'value', {
      configurable: true,
      get: () => text,
      set: (value) => {
        text = String(value);
        this.add(name, text, () => (text = ''));
      },
    });
    if (early) field.value = early;
  }

  /** @param {Object<string, function(string): void>} handlers one for each field, by field name */
  start(handlers) {
    this.handlers = handlers;
    this.schedule();
  }

  add(name, text, clear) {
    this.writes.push({ name, text, clear });
    this.schedule();
  }

  schedule() {
    if (this.scheduled || !this.handlers || this.writes.length === 0) return;
    this.scheduled = true;
    this.defer(() => this.run());
  }

  run() {
    this.scheduled = false;
    const writes = this.writes;
    this.writes = [];
    for (const { name, text, clear } of writes) {
      clear();
      this.handle(name, text);
    }
    this.schedule();
  }

  handle(name, text) {
    try {
      this.handlers[name]?.(text);
    } catch (error) {
      console.error(`field ${name}: ${error.message}`);
    }
  }
}
