/** A clock for tests: time passes only when told, and what waits runs in its order. */
export class FakeClock {
  constructor() {
    this.time = 0;
    this.timers = new Map();
    this.lastId = 0;
  }

  now = () => this.time;

  wait = (run, ms) => {
    this.lastId += 1;
    this.timers.set(this.lastId, { at: this.time + ms, run });
    return this.lastId;
  };

  cancel = (id) => this.timers.delete(id);

  pass(ms) {
    const end = this.time + ms;
    for (let next = this.first(end); next; next = this.first(end)) {
      this.timers.delete(next[0]);
      this.time = next[1].at;
      next[1].run();
    }
    this.time = end;
  }

  first(end) {
    const due = [...this.timers].filter(([, timer]) => timer.at <= end);
    return due.sort((a, b) => a[1].at - b[1].at || a[0] - b[0])[0];
  }
}
