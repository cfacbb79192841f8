/** What was done to an outline, so that it can be taken back step by step. */

/** Older steps are forgotten. */
const MOST_STEPS = 10000;

export class ShapeHistory {
  constructor() {
    this.steps = [];
    this.forgotten = false;
  }

  get isEmpty() {
    return this.steps.length === 0;
  }

  /** The outline is not the one that it was at the beginning. */
  get isChanged() {
    return this.forgotten || !this.isEmpty;
  }

  /** A corner has been added at an index. */
  added(index) {
    this.push({ kind: 'added', index });
  }

  /** A corner has moved; one that came into being with the same gesture is still one step. */
  moved(index, from, isNew = false) {
    if (!isNew) this.push({ kind: 'moved', index, from });
  }

  /** A corner has been taken away; one that came into being with the same gesture never was. */
  removed(index, was, isNew = false) {
    if (isNew) this.steps.pop();
    else this.push({ kind: 'removed', index, was });
  }

  /** The last corner has been placed: from now on corners are moved. */
  closed() {
    this.push({ kind: 'closed' });
  }

  /**
   * Takes back the last step, in the ring too.
   * @param {object[]} ring the corners
   * @returns {string|null} the kind of step: added, moved, removed or closed; null when there is none
   */
  undo(ring) {
    const step = this.steps.pop();
    if (!step) return null;
    if (step.kind === 'added') ring.splice(step.index, 1);
    if (step.kind === 'moved') ring[step.index] = step.from;
    if (step.kind === 'removed') ring.splice(step.index, 0, step.was);
    return step.kind;
  }

  push(step) {
    this.steps.push(step);
    if (this.steps.length <= MOST_STEPS) return;
    this.steps.shift();
    this.forgotten = true;
  }
}
