'use strict';

// What the page was given, and how things in it are found: records and files by their cookies, and who uses a file.
// Cookies are strings; a file cookie of "0" means none.
class Definition {
  constructor(data) {
    Object.assign(this, data);
    this.objects = new Map();  // object cookie: { view, index, record }
    this.nodes.forEach((record, index) => this.objects.set(record.cookie, { view: 'nodes', index, record }));
    this.dialogs.forEach((record, index) => this.objects.set(record.cookie, { view: 'dialogs', index, record }));
    this.files = { icon: new Map(), code: new Map() };
    for (const file of this.icons) this.files.icon.set(file.cookie, file);
    for (const file of this.codeFiles) this.files.code.set(file.cookie, file);
  }

  name() {
    return this.nodes.length > 0 && this.nodes[0].name !== '' ? this.nodes[0].name : this.file.split(/[\\/]/).pop();
  }

  // The small or the large picture of an icon file, or null.
  picture(cookie, size) {
    const icon = this.files.icon.get(cookie);
    return icon ? icon[size].picture : null;
  }

  // The uses of a file: { object, role } in the order of nodes, then dialogs.
  uses(kind, cookie) {
    if (!this.usesByFile) {
      this.usesByFile = new Map();
      for (const object of this.objects.values()) {
        for (const { role, kind: usedKind, cookie: used } of references(object.record)) {
          const key = usedKind + ' ' + used;
          if (!this.usesByFile.has(key)) this.usesByFile.set(key, []);
          this.usesByFile.get(key).push({ object, role });
        }
      }
    }
    return this.usesByFile.get(kind + ' ' + cookie) || [];
  }

  // The findings about a node, dialog or file, by its kind as findings have it: "node", "icon file".
  remarksOn(kind, cookie) {
    if (!this.remarksBySubject) {
      this.remarksBySubject = new Map();
      for (const remark of this.remarks) {
        if (remark.cookie === null) continue;
        const key = remark.object + ' ' + remark.cookie;
        if (!this.remarksBySubject.has(key)) this.remarksBySubject.set(key, []);
        this.remarksBySubject.get(key).push(remark);
      }
    }
    return this.remarksBySubject.get(kind + ' ' + cookie) || [];
  }

  // Where the page shows what a finding is about; null when it is about nothing that is there.
  target(remark) {
    if (remark.cookie === null) return null;
    const object = this.objects.get(remark.cookie);
    switch (remark.object) {
      case 'icon file': return this.files.icon.has(remark.cookie) ? fileAddress('icon', remark.cookie) : null;
      case 'code file': return this.files.code.has(remark.cookie) ? fileAddress('code', remark.cookie) : null;
      default: return object && kindOf(object) === remark.object ? addressOf(object) : null;
    }
  }
}

// "node" or "dialog".
function kindOf(object) {
  return object.view === 'nodes' ? 'node' : 'dialog';
}

// Every file that a record refers to: { role, kind, cookie }.
function references(record) {
  const found = [];
  const add = (role, kind, cookie) => {
    if (cookie !== '0') found.push({ role, kind, cookie });
  };
  add('icon', 'icon', record.icon);
  add('menu script', 'code', record.menuScript);
  add('style sheet', 'code', record.styleSheet);
  for (const script of record.scripts) add('script', 'code', script);
  for (const query of record.childQueries) add('child query', 'code', query.file);
  for (const query of record.renderQueries) add('render query', 'code', query.file);
  return found;
}

// Where the page shows an object or a file.
function addressOf(object) {
  return '#' + object.view + '/' + object.record.cookie;
}

function fileAddress(kind, cookie) {
  return '#files/' + kind + '/' + cookie;
}
