#!/usr/bin/env node
// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
//
// Starts the command that was installed for this platform. Its exit code and the signal that ends it are this
// process's own.
'use strict';

const { constants } = require('node:os');

const name = `loadscope-${process.platform}-${process.arch}`;

function commandPath() {
  try {
    return require.resolve(`${name}/loadscope`);
  } catch {
    process.stderr.write(
      `loadscope: there is no build for ${process.platform} on ${process.arch}, or it was not installed ` +
        `(the optional dependency ${name}).\n`
    );
    process.exit(127);
  }
}

const command = commandPath();
const words = process.argv.slice(2);

// The command takes the place of this process, where that can be had: then nothing stands between it and anyone.
if (typeof process.execve === 'function') {
  process.removeAllListeners('warning'); // that this function is new
  process.execve(command, ['loadscope', ...words], process.env);
}

const child = require('node:child_process').spawn(command, words, { stdio: 'inherit', argv0: 'loadscope' });
child.on('error', (error) => {
  process.stderr.write(`loadscope: ${error.message}\n`);
  process.exit(126);
});

// A terminal sends an interrupt to both; passed on, it would be the second, which ends the command at once.
const isOnTerminal = process.stdin.isTTY || process.stdout.isTTY || process.stderr.isTTY;
for (const signal of ['SIGINT', 'SIGTERM', 'SIGHUP']) {
  process.on(signal, () => {
    if (signal !== 'SIGINT' || !isOnTerminal) child.kill(signal);
  });
}

child.on('exit', (code, signal) => {
  if (signal === null) process.exit(code);
  for (const each of ['SIGINT', 'SIGTERM', 'SIGHUP']) process.removeAllListeners(each);
  process.kill(process.pid, signal);
  process.exit(128 + constants.signals[signal]); // of a signal that does not end this process
});
